// ProcedureTable.h: window procedures with the kind of text that they take, and the cookies that stand for them.
#pragma once

#include <kelgen/platform/posix/user/objects/WindowObject.h>

namespace kelgen::posix::user {

/// The one entry for a procedure and its kind. A cookie gives its own entry, whatever @p wide says. Takes the desktop lock.
const Procedure* ProcedureOf(WNDPROC procedure, bool wide);

/// What a caller of that kind gets to see: the procedure when it takes the caller's kind of text, else a cookie.
WNDPROC ProcedureFor(const Procedure& procedure, bool wideCaller);

/// The entry of a cookie; null for anything else. Takes no lock.
const Procedure* CookieProcedure(WNDPROC value);

}  // namespace kelgen::posix::user
