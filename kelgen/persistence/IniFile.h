// IniFile.h: a read-only model of an INI file: its sections, and their properties and plain values, in file order.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/Array.h>
#include <kelgen/framework/collections/ListTypes.h>
#include <kelgen/framework/collections/StringArray.h>

#include <atomic>
#include <memory>

namespace _kelgen {

/// One "name=value" line.
class KELGEN_API CIniProperty
{
public:
    /// Nothing is trimmed.
    CIniProperty(CString name, CString value);
    CIniProperty(const CIniProperty&) = default;
    CIniProperty& operator=(const CIniProperty&) = default;
    virtual ~CIniProperty() = default;

    /// What stands before the first "=".
    CString GetName() const { return m_name; }
    /// What stands after the first "=".
    CString GetValue() const { return m_value; }

private:
    friend class CIniSection;

    CString m_name;
    CString m_value;
};

/// A named section: properties, and plain values (lines without "="), each in file order. Owns its properties.
class KELGEN_API CIniSection
{
public:
    /// An empty section.
    explicit CIniSection(CString name);
    CIniSection(const CIniSection&) = delete;
    CIniSection& operator=(const CIniSection&) = delete;
    virtual ~CIniSection();

    /// The section's name.
    CString GetName() const { return m_name; }
    /// Gives the section another name.
    void SetName(CString name)
    {
        LeaveIndex();
        m_name = name;
    }

    /// Appends a plain value.
    void AddValue(CString value);
    /// The number of plain values.
    int GetValuesCount() const;
    /// The plain value at @p index. Throws: the invalid-argument exception for an index outside [0, count).
    /// Cost: one step a value before it; GetPropertyValue(out) reads them all in one walk.
    CString GetValueAt(int index) const;

    /// Appends a property; a name may occur more than once.
    void AddProperty(CString name, CString value);
    /// The number of properties.
    int GetPropertiesCount() const;
    /// The property at @p index, owned by the section. Throws: the invalid-argument exception for an index outside [0, count).
    CIniProperty* GetPropertyAt(int index) const;
    /// The value of the first property whose name equals @p name ignoring case; "" when there is none.
    CString GetPropertyValue(CString name) const;
    /// Appends every plain value, in order, to @p out.
    void GetPropertyValue(CStringArray& out) const;
    /// Deletes every property, first to last; the plain values stay.
    void ClearProperties();

private:
    friend class CIniFile;

    void LeaveIndex()
    {
        if (m_indexHolds)
            m_indexHolds->store(false, std::memory_order_relaxed);
        m_indexHolds.reset();
    }

    CStringList m_values{10};
    CArray<CIniProperty*, CIniProperty*> m_properties;
    CString m_name;
    std::shared_ptr<std::atomic<bool>> m_indexHolds;  // of the file that knows this section by its name
};

/// The sections of an INI file, in file order; sections of one name are kept apart. Owns its sections. Nothing is written back.
///
///     _kelgen::CIniFile ini;
///     if (ini.LoadFile("settings.ini"))
///         title = ini.GetPropertyValue("Main", "Title");
///
/// Look-ups take the first match in file order; section names compare by case, property names ignore it.
class KELGEN_API CIniFile : public CArray<CIniSection*, CIniSection*>
{
public:
    CIniFile();
    /// LoadFile(@p path), its result dropped.
    explicit CIniFile(const char* path);
    CIniFile(const CIniFile&) = delete;
    CIniFile& operator=(const CIniFile&) = delete;
    ~CIniFile() override;

    /// Appends the sections of the file @p path to those already present; true. False, and the model as it was, when the file
    /// cannot be opened or read. No line is an error:
    ///
    /// - An empty line is skipped; so is every line before the first section.
    /// - A line with a "[" anywhere, and whose first "]" is not its first character, begins a section. Its name is what follows
    ///   the first "[", less the first "]" in it; nothing is trimmed: `  [Main]  ; x` is named `Main  ; x`, `a[b]c` is named `bc`.
    ///   By contract: this comes before the next rule, so `key=[a]` begins a section too.
    /// - A line with "=" is a property: name before the first "=", value after it, neither trimmed.
    /// - Any other line is a plain value. There are no comments: `; note` is a plain value.
    ///
    /// Lines end with a line feed, one carriage return before it dropped, and may have any length; zeros are bytes like others.
    /// By contract: as in every text file, a byte 0x1A ends the file.
    bool LoadFile(const char* path);

    /// Deletes every section, the first one until none is left: while a section of a derived class ends, the list begins with it.
    void RemoveAll();

    /// The first section named @p name, owned by the file; null when there is none.
    /// Cost: a look into an index, which LoadFile makes, and at each place in the list; in a list changed since, a comparison a section.
    const CIniSection* FindSection(const CString& name) const;
    /// CIniSection::GetPropertyValue(@p name) of the first section named @p section; "" when there is none.
    CString GetPropertyValue(const CString& section, const CString& name) const;
    /// Appends all plain values of the first section named @p section to @p out; nothing when there is none.
    void GetPropertyValue(const CString& section, CStringArray& out) const;

private:
    class CIndex;

    void RemoveFrom(int first);

    std::unique_ptr<CIndex> m_index;
};

}  // namespace _kelgen
