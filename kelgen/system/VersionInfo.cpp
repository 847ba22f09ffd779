// VersionInfo.cpp: loads version resources and looks texts up in them.
#include <kelgen/system/VersionInfo.h>

#include <cstddef>
#include <cstring>

namespace {

constexpr WORD kDefaultCodePage = 1252;

}  // namespace

CVersionInfo::CVersionInfo()
{
    Unload();
}

CVersionInfo::~CVersionInfo() = default;

int CVersionInfo::Load(const CString& path)
{
    Unload();
    DWORD handle = 0;
    m_size = GetFileVersionInfoSizeA(path, &handle);
    if (m_size == 0)
        return 0;
    m_data = std::make_unique<BYTE[]>(m_size);

    // The resource's own length word comes first; the platform puts its narrow texts behind that length, twice as far. One that
    // claims more than there is would send it outside the block.
    WORD claimed = 0;
    LPVOID fixedInfo = nullptr;
    UINT fixedSize = 0;
    bool isSound = m_size >= sizeof claimed && GetFileVersionInfoA(path, handle, m_size, m_data.get()) != FALSE;
    if (isSound)
        std::memcpy(&claimed, m_data.get(), sizeof claimed);
    isSound = isSound && DWORD{claimed} * 2 <= m_size && Query("\\", fixedInfo, fixedSize) && fixedSize >= sizeof(VS_FIXEDFILEINFO);
    if (!isSound) {
        Unload();
        return 0;
    }
    m_fixedInfo = static_cast<VS_FIXEDFILEINFO*>(fixedInfo);

    LPVOID translations = nullptr;
    UINT translationsSize = 0;
    if (Query("\\VarFileInfo\\Translation", translations, translationsSize) && translationsSize >= sizeof(TRANSLATION)) {
        m_translations = static_cast<TRANSLATION*>(translations);
        m_translationCount = static_cast<int>(translationsSize / sizeof(TRANSLATION));
        SetTranslation(0);
    }
    return 1;
}

void CVersionInfo::Unload()
{
    m_data.reset();
    m_size = 0;
    m_language = 0;
    m_codePage = kDefaultCodePage;
    m_translations = nullptr;
    m_translationCount = 0;
    m_fixedInfo = nullptr;
}

bool CVersionInfo::Query(const char* path, LPVOID& value, UINT& length) const
{
    if (!VerQueryValueA(m_data.get(), path, &value, &length))
        return false;
    // A damaged resource may lead outside.
    const std::ptrdiff_t offset = static_cast<BYTE*>(value) - m_data.get();
    return offset >= 0 && offset <= std::ptrdiff_t{m_size} && length <= m_size - static_cast<DWORD>(offset);
}

const VS_FIXEDFILEINFO& CVersionInfo::Fixed() const
{
    static constexpr VS_FIXEDFILEINFO kNone{};
    return m_fixedInfo ? *m_fixedInfo : kNone;
}

CString CVersionInfo::GetValue(const CString& key) const
{
    CString path;
    path.Format("\\StringFileInfo\\%04x%04x\\%s", m_language, m_codePage, key.GetString());
    LPVOID value = nullptr;
    UINT length = 0;
    if (!m_data || !Query(path, value, length))
        return CString();
    // Not every text has its terminator.
    const auto text = static_cast<const char*>(value);
    return CString(text, static_cast<int>(strnlen(text, length)));
}

CVersionInfo::TRANSLATION* CVersionInfo::GetTranslation(int i) const
{
    return m_translations + i;
}

void CVersionInfo::SetTranslation(int i)
{
    if (!m_translations)
        return;
    constexpr std::ptrdiff_t kSize = sizeof(TRANSLATION);
    const std::ptrdiff_t offset = reinterpret_cast<BYTE*>(m_translations) - m_data.get() + i * kSize;
    if (offset < 0 || offset > std::ptrdiff_t{m_size} - kSize)
        return;
    TRANSLATION translation;
    std::memcpy(&translation, m_data.get() + offset, sizeof translation);
    m_language = translation.language;
    m_codePage = translation.codePage;
}
