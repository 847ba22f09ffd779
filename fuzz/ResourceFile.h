// ResourceFile.h: compiled resources made of a fuzzer's bytes.
#pragma once

#include <kelgen/platform/Win32.h>
#include <kelgen/platform/posix/resources/api/ResourceModules.h>

#include <optional>
#include <string>
#include <vector>

namespace fuzz {

/// Resources with numbers for names, registered under a module of their own while this lives.
class ResourceFile
{
public:
    void Add(LPCSTR type, WORD name, const std::string& bytes)
    {
        const auto number = static_cast<WORD>(reinterpret_cast<ULONG_PTR>(type));
        const DWORD header[] = {static_cast<DWORD>(bytes.size()), 32, Number(number), Number(name), 0, 0, 0, 0};
        const auto* const first = reinterpret_cast<const BYTE*>(header);
        m_bytes.insert(m_bytes.end(), first, first + sizeof header);
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
        m_bytes.resize((m_bytes.size() + 3) / 4 * 4);
    }

    /// The module, once everything was added.
    HMODULE Module()
    {
        if (!m_registered)
            m_registered.emplace(&kModule, m_bytes.data(), m_bytes.data() + m_bytes.size());
        return reinterpret_cast<HMODULE>(const_cast<char*>(&kModule));
    }

private:
    static constexpr DWORD Number(WORD number) { return 0xFFFF | (DWORD{number} << 16); }

    static inline const char kModule = 0;
    std::vector<BYTE> m_bytes;
    std::optional<kelgen::posix::RegisteredResources> m_registered;
};

}  // namespace fuzz
