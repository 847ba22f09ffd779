// Account.h: prints what the settings host does, step by step.
#pragma once

#include <kelgen/property/Property.h>

namespace account {

/// Begins a numbered step: "1. Read settings.ini".
void Step(const CString& title);

/// A line of the step.
void Line(const CString& text);

/// A line for a notification, numbered in the order in which they come.
void Notified(const CString& who, const CString& what);

/// The text in quotation marks, shortened and without control characters, for any bytes of a user's file.
CString Quoted(const CString& text);

/// The property's name and value.
CString NameAndValue(const gen::CProperty& property);

/// The part of a path behind its last separator.
CString FileName(const CString& path);

}  // namespace account
