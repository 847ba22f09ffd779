// Account.cpp: steps, lines and notifications on standard output.
#include "Account.h"

#include <algorithm>
#include <cstdio>

namespace account {

namespace {

constexpr int kLongestText = 60;

int steps = 0;
int notifications = 0;

// A control character would move the cursor of whoever reads the account.
CString Printable(CString text)
{
    for (int i = 0; i < text.GetLength(); ++i) {
        const auto byte = static_cast<unsigned char>(text.GetAt(i));
        if (byte < ' ' || byte == 0x7F)
            text.SetAt(i, '.');
    }
    return text;
}

// Cut before the byte that begins a character, should the text be UTF-8.
CString Shortened(const CString& text)
{
    if (text.GetLength() <= kLongestText)
        return Printable(text);
    int length = kLongestText;
    while (length > kLongestText - 4 && (static_cast<unsigned char>(text.GetAt(length)) & 0xC0) == 0x80)
        --length;
    return Printable(text.Left(length)) + "...";
}

}  // namespace

void Step(const CString& title)
{
    std::printf("%s%d. %s\n", steps == 0 ? "" : "\n", steps + 1, title.GetString());
    ++steps;
}

void Line(const CString& text)
{
    std::printf("   %s\n", text.GetString());
}

void Notified(const CString& who, const CString& what)
{
    std::printf("     %2d. %s: %s\n", ++notifications, who.GetString(), what.GetString());
}

CString Quoted(const CString& text)
{
    return "\"" + Shortened(text) + "\"";
}

CString NameAndValue(const gen::CProperty& property)
{
    const gen::CPropertyValue& value = property.GetValue();
    CString shown = value.GetValueString();
    if (value.GetType() == gen::eptString)
        shown = Quoted(shown);
    else if (value.GetType() == gen::eptBool)
        shown = value.GetValueInteger() != 0 ? "yes" : "no";
    return Shortened(property.GetName()) + " = " + shown;
}

CString FileName(const CString& path)
{
    const int separator = std::max(path.ReverseFind('/'), path.ReverseFind('\\'));
    return Printable(path.Mid(separator + 1));
}

}  // namespace account
