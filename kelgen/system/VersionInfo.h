// VersionInfo.h: the version resource of a file, and the version of the running operating system.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/platform/Win32.h>

#include <memory>

/// The version resource of a program or library.
///
///     CVersionInfo version;
///     if (version.Load("C:\\Program Files\\Example\\example.exe"))
///         Show(version.GetProductName(), version.GetFileVersionAsString());
///
/// While nothing is loaded the numbers are 0, the texts empty and the pointers null. Threads: one at a time.
class KELGEN_API CVersionInfo
{
public:
    /// An entry of the resource's list of translations.
    struct TRANSLATION
    {
        /// The language's number; 1033 is American English.
        WORD language;
        /// The code page of the texts; 1200 is UTF-16.
        WORD codePage;
    };

    CVersionInfo();
    CVersionInfo(const CVersionInfo&) = delete;
    CVersionInfo& operator=(const CVersionInfo&) = delete;
    ~CVersionInfo();

    /// Reads the version resource of the file @p path and makes its first translation current; 1. 0, and nothing is loaded, when
    /// the file is missing or has no sound version resource. A resource without translations keeps language 0 and code page 1252.
    int Load(const CString& path);

    /// The fixed part, which lives as long as what is loaded.
    VS_FIXEDFILEINFO* GetFixedFileInfo() const { return m_fixedInfo; }
    /// Which bits of GetFileFlags mean anything. This member and the next five read the fixed part: 0 while nothing is loaded.
    DWORD GetFileFlagsMask() const { return Fixed().dwFileFlagsMask; }
    /// VS_FF_ bits: a debug build, a pre-release and so on.
    DWORD GetFileFlags() const { return Fixed().dwFileFlags; }
    /// The system that the file was made for, a VOS_ number.
    DWORD GetOS() const { return Fixed().dwFileOS; }
    /// Whether it is a program, a library and so on, a VFT_ number.
    DWORD GetFileType() const { return Fixed().dwFileType; }
    /// The kind of driver or font, a VFT2_ number; 0 for others.
    DWORD GetFileSubType() const { return Fixed().dwFileSubtype; }
    /// When the file was made, as its maker noted it; mostly 0.
    FILETIME GetCreationTime() const { return {Fixed().dwFileDateLS, Fixed().dwFileDateMS}; }
    /// The four parts of the version, 16 bits each: 1.2.3.4 is 0x0001000200030004.
    ULONGLONG GetFileVersion() const { return Joined(Fixed().dwFileVersionMS, Fixed().dwFileVersionLS); }
    /// The same four parts of the product's version.
    ULONGLONG GetProductVersion() const { return Joined(Fixed().dwProductVersionMS, Fixed().dwProductVersionLS); }

    /// The text @p key (case does not count) of the current translation, in the ANSI code page up to its first zero; empty when
    /// there is none.
    CString GetValue(const CString& key) const;

    /// The texts of the standard keys, each by GetValue with the key of the member's name.
    CString GetCompanyName() const { return GetValue("CompanyName"); }
    CString GetFileDescription() const { return GetValue("FileDescription"); }
    CString GetFileVersionAsString() const { return GetValue("FileVersion"); }
    CString GetInternalName() const { return GetValue("InternalName"); }
    CString GetLegalCopyright() const { return GetValue("LegalCopyright"); }
    CString GetOriginalFilename() const { return GetValue("OriginalFilename"); }
    /// By contract: the key is spelt with a small n, which makes no difference, as keys ignore case.
    CString GetProductName() const { return GetValue("Productname"); }
    CString GetProductVersionAsString() const { return GetValue("ProductVersion"); }
    CString GetComments() const { return GetValue("Comments"); }
    CString GetLegalTrademarks() const { return GetValue("LegalTrademarks"); }
    CString GetPrivateBuild() const { return GetValue("PrivateBuild"); }
    CString GetSpecialBuild() const { return GetValue("SpecialBuild"); }

    /// The number of translations; 0 while nothing is loaded.
    int GetNumberOfTranslations() const { return m_translationCount; }
    /// The translation @p i, in what is loaded. By contract: @p i is not tested, so a caller keeps within 0 to GetNumberOfTranslations()
    /// - 1.
    TRANSLATION* GetTranslation(int i) const;
    /// Makes the translation @p i the one that GetValue reads. By contract: @p i is not tested against their number, so a caller keeps
    /// within it; nothing happens when it leads out of what is loaded.
    void SetTranslation(int i);

protected:
    /// Frees what is loaded.
    void Unload();

private:
    const VS_FIXEDFILEINFO& Fixed() const;
    static ULONGLONG Joined(DWORD high, DWORD low) { return (ULONGLONG{high} << 32) + low; }
    bool Query(const char* path, LPVOID& value, UINT& length) const;

    WORD m_language;
    WORD m_codePage;
    std::unique_ptr<BYTE[]> m_data;
    TRANSLATION* m_translations;
    int m_translationCount;
    VS_FIXEDFILEINFO* m_fixedInfo;
    DWORD m_size = 0;
};

/// The running operating system's version.
///
///     if (COSVersionInfo::Get().IsWinXPOrGreater()) ...
///
/// Threads: the first call of Get comes before threads share it.
class KELGEN_API COSVersionInfo
{
public:
    /// The only object, filled by GetVersionExA at the first call.
    static COSVersionInfo& Get();

    /// Each: whether the running system is of exactly that version.
    bool IsWin31() const;
    bool IsWin95() const;
    bool IsWin98() const;
    bool IsWinME() const;
    bool IsWinNT4() const;
    bool IsWin2K() const;
    /// By contract: 5.1 only, and so not 5.2, which IsWinXPOrGreater covers.
    bool IsWinXP() const;

    /// Each: whether the running system is of that version or a later one. By contract: of that family alone, and so false on every later
    /// system, which is of the other family.
    bool IsWin95OrGreater() const;
    bool IsWin98OrGreater() const;
    bool IsWinMEOrGreater() const;

    /// Each: whether the running system is of that version or a later one.
    bool IsWinNT4OrGreater() const;
    bool IsWin2KOrGreater() const;
    bool IsWinXPOrGreater() const;

private:
    COSVersionInfo();
    bool gte_ver(DWORD major, DWORD minor) const;
    bool eq_ver(DWORD major, DWORD minor) const;

    OSVERSIONINFOA m_version;
};
