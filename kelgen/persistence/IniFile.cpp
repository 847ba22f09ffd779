// IniFile.cpp: reading an INI file line by line, and looking values up.
#include <kelgen/persistence/IniFile.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/files/StdioFile.h>
#include <kelgen/text/internal/AsciiLetters.h>

#include <cstring>
#include <string_view>
#include <typeinfo>
#include <unordered_map>
#include <utility>
#include <vector>

namespace _kelgen {

namespace {

// A line as its bytes, zeros among them: CString's own search would stop at a zero.
std::string_view BytesOf(const CString& line)
{
    return {line.GetString(), static_cast<std::size_t>(line.GetLength())};
}

CString TextOf(std::string_view bytes)
{
    return CString(bytes.data(), static_cast<int>(bytes.size()));
}

// Whether the line begins a section; sets its name.
bool ParseSectionLine(std::string_view line, CString& name)
{
    const std::size_t open = line.find('[');
    if (open == std::string_view::npos)
        return false;
    const std::size_t close = line.find(']');
    if (close == std::string_view::npos || close == 0)
        return false;

    line.remove_prefix(open + 1);
    const std::size_t dropped = line.find(']');
    name = TextOf(line.substr(0, dropped));
    if (dropped != std::string_view::npos)
        name += TextOf(line.substr(dropped + 1));
    return true;
}

// Whether CompareNoCase takes the names for equal, which it need not be asked while they are of ASCII: different units of it are equal
// at most as one letter in both cases, and equal ones in every locale.
bool AreEqualNoCase(const CString& left, const CString& right)
{
    const LPCSTR first = left.GetString();
    const LPCSTR second = right.GetString();
    for (int i = 0;; ++i) {
        const auto one = static_cast<unsigned char>(first[i]);
        const auto other = static_cast<unsigned char>(second[i]);
        if ((one | other) >= 0x80)
            break;
        if (one != other && !kelgen::detail::IsSameLetter(one, other))
            return false;
        if (one != other)
            break;
        if (one == 0)
            return true;
    }
    return left.CompareNoCase(right) == 0;
}

void AddLine(CIniSection& section, std::string_view line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        section.AddValue(TextOf(line));
    else
        section.AddProperty(TextOf(line.substr(0, equals)), TextOf(line.substr(equals + 1)));
}

}  // namespace

CIniProperty::CIniProperty(CString name, CString value) : m_name(std::move(name)), m_value(std::move(value)) {}

CIniSection::CIniSection(CString name) : m_name(std::move(name)) {}

CIniSection::~CIniSection()
{
    LeaveIndex();
    ClearProperties();
}

void CIniSection::AddValue(CString value)
{
    m_values.AddTail(value);
}

int CIniSection::GetValuesCount() const
{
    return static_cast<int>(m_values.GetCount());
}

CString CIniSection::GetValueAt(int index) const
{
    const POSITION position = index >= 0 ? m_values.FindIndex(index) : nullptr;
    if (position == nullptr)
        KELGEN_THROW_BAD_INDEX(index, m_values.GetCount());
    return m_values.GetAt(position);
}

void CIniSection::AddProperty(CString name, CString value)
{
    auto property = std::make_unique<CIniProperty>(name, value);
    m_properties.Add(property.get());
    static_cast<void>(property.release());
}

int CIniSection::GetPropertiesCount() const
{
    return m_properties.GetSize();
}

CIniProperty* CIniSection::GetPropertyAt(int index) const
{
    return m_properties.GetAt(index);
}

CString CIniSection::GetPropertyValue(CString name) const
{
    for (int i = 0; i < m_properties.GetSize(); ++i) {
        const CIniProperty& property = *m_properties.GetAt(i);
        if (AreEqualNoCase(property.m_name, name))
            return property.m_value;
    }
    return CString();
}

void CIniSection::GetPropertyValue(CStringArray& out) const
{
    for (POSITION position = m_values.GetHeadPosition(); position != nullptr;)
        out.Add(m_values.GetNext(position));
}

void CIniSection::ClearProperties()
{
    for (int i = 0; i < m_properties.GetSize(); ++i)
        delete m_properties.GetAt(i);
    m_properties.RemoveAll();
}

/// The first section of each name. Hosts may change the list and the sections' names: it holds as long as none of those sections has got
/// another name or gone, for as many places as the list has still those that it was made of.
class CIniFile::CIndex
{
public:
    /// Takes in the sections that follow those it knows.
    void Extend(const CIniFile& file)
    {
        const std::size_t known = m_sections.size();
        m_sections.assign(file.GetData(), file.GetData() + file.GetSize());
        for (std::size_t i = known; i < m_sections.size(); ++i) {
            CIniSection* const section = m_sections[i];
            if (section->m_indexHolds != m_holds) {
                // Another file's index may know it.
                section->LeaveIndex();
                section->m_indexHolds = m_holds;
            }
            m_byName.emplace(BytesOf(section->m_name), i);
        }
    }

    bool Holds(const CIniFile& file) const
    {
        return m_sections.size() == static_cast<std::size_t>(file.GetSize()) && HoldsFor(file, m_sections.size());
    }

    /// Sets @p section to the first one named @p name, null when there is none; false when the index does not tell.
    bool Find(const CIniFile& file, std::string_view name, const CIniSection*& section) const
    {
        // The keys of an index that does not hold may have gone.
        if (!m_holds->load(std::memory_order_relaxed))
            return false;
        const auto found = m_byName.find(name);
        section = found == m_byName.end() ? nullptr : m_sections[found->second];
        // What comes behind the first one does not matter.
        return section != nullptr ? HoldsFor(file, found->second + 1) : Holds(file);
    }

private:
    bool HoldsFor(const CIniFile& file, std::size_t places) const
    {
        return m_holds->load(std::memory_order_relaxed) && places <= static_cast<std::size_t>(file.GetSize()) &&
               std::equal(m_sections.data(), m_sections.data() + places, file.GetData());
    }

    const std::shared_ptr<std::atomic<bool>> m_holds = std::make_shared<std::atomic<bool>>(true);
    std::vector<CIniSection*> m_sections;
    std::unordered_map<std::string_view, std::size_t> m_byName;  // places by names, which lie in the sections
};

CIniFile::CIniFile() = default;

CIniFile::CIniFile(const char* path)
{
    LoadFile(path);
}

CIniFile::~CIniFile()
{
    RemoveAll();
}

bool CIniFile::LoadFile(const char* path)
{
    CStdioFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone | CFile::typeText))
        return false;

    const int before = GetSize();
    if (!m_index || !m_index->Holds(*this))
        m_index = std::make_unique<CIndex>();
    try {
        CIniSection* current = nullptr;
        CString line;
        CString name;
        while (file.ReadString(line)) {
            if (line.IsEmpty())
                continue;
            if (ParseSectionLine(BytesOf(line), name)) {
                auto section = std::make_unique<CIniSection>(name);
                Add(section.get());
                current = section.release();
            } else if (current != nullptr) {
                AddLine(*current, BytesOf(line));
            }
        }
        file.Close();
        m_index->Extend(*this);
    } catch (CFileException* failure) {
        failure->Delete();
        RemoveFrom(before);
        return false;
    }
    return true;
}

// The end of a plain section is seen by nobody: a run of them leaves the array at once, as shifting the rest down after each would take
// the square of their number.
void CIniFile::RemoveFrom(int first)
{
    while (GetSize() > first) {
        int end = first;
        for (; end < GetSize(); ++end) {
            const CIniSection& section = *GetAt(end);
            if (typeid(section) != typeid(CIniSection))
                break;
            delete &section;
        }
        if (end > first) {
            RemoveAt(first, end - first);
            continue;
        }
        CIniSection* const section = GetAt(first);
        delete section;
        if (GetSize() > first && GetAt(first) == section)
            RemoveAt(first);
    }
}

void CIniFile::RemoveAll()
{
    m_index.reset();
    RemoveFrom(0);
}

const CIniSection* CIniFile::FindSection(const CString& name) const
{
    const std::string_view wanted = BytesOf(name);
    if (const CIniSection* found = nullptr; m_index && m_index->Find(*this, wanted, found))
        return found;
    for (int i = 0; i < GetSize(); ++i) {
        const CIniSection* section = GetAt(i);
        if (BytesOf(section->m_name) == wanted)
            return section;
    }
    return nullptr;
}

CString CIniFile::GetPropertyValue(const CString& section, const CString& name) const
{
    const CIniSection* found = FindSection(section);
    return found != nullptr ? found->GetPropertyValue(name) : CString();
}

void CIniFile::GetPropertyValue(const CString& section, CStringArray& out) const
{
    if (const CIniSection* found = FindSection(section))
        found->GetPropertyValue(out);
}

}  // namespace _kelgen
