// Interrupt.h: whether the user has asked a program without a visible window to end.
#pragma once

namespace interrupt {

/// From now on SIGINT and SIGTERM set a mark and wake the calling thread with WM_NULL; the last caller is the one that is woken.
void Catch();

/// Whether one of them came.
bool HasCome();

}  // namespace interrupt
