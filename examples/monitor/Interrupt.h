// Interrupt.h: whether the user has asked a program without a visible window to end.
#pragma once

namespace interrupt {

/// From now on SIGINT and SIGTERM only set a mark: a handler may do no more.
void Catch();

/// Whether one of them came.
bool HasCome();

}  // namespace interrupt
