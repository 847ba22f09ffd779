// Requests.h: how a client asks the service: a control carries a number and no more, so the question and the answer are files.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/platform/Win32.h>

#include <functional>

namespace requests {

/// The control that makes the service answer what lies in its folder of requests.
constexpr DWORD kAnswerControl = 128;

/// In the service, where one thread alone answers: gives every request in @p folder the answer that @p answerOf finds for its text.
void Answer(const CString& folder, const std::function<CString(const CString&)>& answerOf);

/// In a client: lays @p question into @p folder, sends the control to @p service, and takes the answer. False with the last error.
bool Ask(SC_HANDLE service, const CString& folder, const CString& question, CString& answer);

}  // namespace requests
