// Registry.h: text values of registry keys.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/platform/Win32.h>

/// The registry's text values. Errors are results, never exceptions.
class KELGEN_API CRegistry
{
public:
    virtual ~CRegistry() = default;

    /// Reads the REG_SZ value @p name of @p key into @p out, cut at its first zero; true. False, and @p out as it was, when there
    /// is no such value or it has another type. A value that others write meanwhile is read as it was before or after.
    static bool RegQueryValueA(HKEY key, const char* name, CString& out);

    class CKey;
};

/// An open registry key, closed on destruction.
///
///     CRegistry::CKey key(HKEY_CURRENT_USER, "Software\\Example");
///     CString title;
///     if (key.QueryValue("Title", title)) ...
///
/// By contract: a copy has the same handle, as all members are copied, and each of both closes it: the handle is invalid once the first
/// did, the second close fails without effect.
class KELGEN_API CRegistry::CKey
{
public:
    CKey() = default;
    /// Opens the existing key @p subkey of @p parent. By contract: a failure leaves the key closed and is not thrown, so a caller asks
    /// GetHandle.
    CKey(HKEY parent, const char* subkey);
    CKey(const CKey&) = default;
    CKey& operator=(const CKey&) = default;
    /// Calls CloseKey.
    virtual ~CKey();

    /// Opens the existing key @p subkey of @p parent; true on success. By contract: a key already open is not closed first, since copies
    /// may share its handle, and that is lost here even when this fails.
    bool OpenKey(HKEY parent, const char* subkey);
    /// Opens the key @p subkey of @p parent, and first makes it, with those above it, if it is missing; true on success. A key already
    /// open is closed then; on failure it stays open.
    bool CreateKey(HKEY parent, const char* subkey);
    /// Closes the key; does nothing if none is open. By contract: the handle stays when closing fails, so that it can be tried again.
    void CloseKey();
    /// The open key's handle, null when none is open.
    HKEY GetHandle() const { return m_key; }

    /// Calls CRegistry::RegQueryValueA on this key.
    bool QueryValue(const char* name, CString& out) const;
    /// Stores @p text, terminator included, as the REG_SZ value @p name; true on success. Null fails.
    bool SetValue(const char* name, const char* text);
    /// Deletes the value @p name; true on success.
    bool DeleteValue(const char* name);
    /// Deletes this key itself, which must have no subkeys; true on success. The handle stays open, and all but closing fails
    /// on it.
    bool DeleteKey();

private:
    HKEY m_key = nullptr;
};
