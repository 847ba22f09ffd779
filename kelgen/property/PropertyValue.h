// PropertyValue.h: a typed value that tells the property it belongs to of every assignment.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/platform/Win32.h>

#include <cstddef>

class CBaseIntegerText;
class CBaseTextArray;
class CRegistryPropertyExchange;

namespace gen {

class CProperty;

/// What a value holds. The codes are part of stored and exchanged data.
enum EPropertyType : int
{
    eptNone = 0,             ///< nothing yet
    eptUndefined = 1,        ///< nothing, on purpose
    eptInteger = 2,          ///< signed 32-bit
    eptUnsignedInteger = 3,  ///< unsigned 32-bit
    eptShort = 4,            ///< signed 16-bit
    eptUnsignedShort = 5,    ///< unsigned 16-bit
    eptString = 6,           ///< narrow text
    eptBool = 7              ///< 0 or 1
};

/// An integer of one of four widths, a text or a boolean, converted on request. The value keeps its type: setters convert what
/// they are given into it.
///
///     gen::CPropertyValue width("640");     // type 6
///     width.GetValueInteger();              // 640
///     width.SetValueInteger(800);           // still type 6: the text "800"
///     bool same = width == gen::CPropertyValue(800);  // true
///
/// Every store reports to the owning property, changed or not. A setter reports once.
/// By contract: assignment operators from numbers and texts report twice, once in the setter and once more after it, and listeners count
/// on both. Assignment from another value reports once.
///
/// Only a CProperty gives its value an owner; a value that stands alone, or in an array, has none and may be moved in memory.
/// No operation fails. Threads: none of its own; the report runs on the assigning thread.
class KELGEN_API CPropertyValue
{
public:
    /// Survives being moved bit by bit: see kelgen::is_movable_bitwise.
    using MovableBitwise = CPropertyValue;

    /// Type eptNone, number 0, empty text.
    CPropertyValue() = default;
    /// A value of type eptInteger.
    CPropertyValue(int value);
    /// Each: a value of type eptString; null gives the empty text.
    CPropertyValue(const char* text);
    CPropertyValue(const CString& text) : CPropertyValue(text.GetString()) {}
    CPropertyValue(std::nullptr_t) : CPropertyValue(static_cast<const char*>(nullptr)) {}
    /// A value of type eptBool.
    CPropertyValue(bool value);
    /// Each: a value of type eptUnsignedInteger; of a number with more than 32 bits the low 32.
    CPropertyValue(unsigned int value);
    CPropertyValue(unsigned long value) : CPropertyValue(static_cast<unsigned int>(value)) {}
    /// A value of type eptInteger; of a number with more than 32 bits the low 32.
    CPropertyValue(long value) : CPropertyValue(static_cast<int>(value)) {}
    /// 16-bit text, and any other pointer, does not compile: a value holds narrow text. Convert it with kelgen::NarrowFromUtf8 or
    /// CInternational::UnicodeToAnsi.
    CPropertyValue(const void*) = delete;
    /// Copies type, number and text; the copy has no owner.
    CPropertyValue(const CPropertyValue& other);

    /// Copies type, number and text, never the owner, and reports once.
    CPropertyValue& operator=(const CPropertyValue& other);
    /// Calls SetValueInteger. By contract: reports twice, see the class.
    CPropertyValue& operator=(int value);
    /// Calls SetValueInteger. By contract: reports twice, see the class.
    CPropertyValue& operator=(short value);
    /// Calls SetValueInteger of 1 or 0. By contract: reports twice, see the class.
    CPropertyValue& operator=(bool value);
    /// Calls SetValueUnsignedInteger. By contract: reports twice, see the class.
    CPropertyValue& operator=(unsigned int value);
    /// Calls SetValueUnsignedInteger. By contract: reports twice, see the class.
    CPropertyValue& operator=(unsigned short value);
    /// Each calls SetValueString. By contract: reports twice, see the class.
    CPropertyValue& operator=(const char* text);
    CPropertyValue& operator=(const CString& text) { return *this = text.GetString(); }
    CPropertyValue& operator=(std::nullptr_t) { return *this = static_cast<const char*>(nullptr); }
    /// Both: as the operators for 32 bits, with the low 32 of a longer number.
    CPropertyValue& operator=(long value) { return *this = static_cast<int>(value); }
    CPropertyValue& operator=(unsigned long value) { return *this = static_cast<unsigned int>(value); }
    /// As for the constructor: no 16-bit text and no other pointer.
    CPropertyValue& operator=(const void*) = delete;

    /// The type of what was assigned last, or what SetType made it.
    EPropertyType GetType() const { return m_type; }
    /// Makes @p type the type. By contract: converts nothing and reports nothing; number and text stay as they are, so the
    /// bits of the one are read as the other.
    void SetType(EPropertyType type) { m_type = type; }
    /// Whether the type is one of the four integer types.
    bool IsInteger() const { return m_type >= eptInteger && m_type <= eptUnsignedShort; }

    /// The value as a number: 16-bit types extended by their sign or by zero, a boolean as 0 or 1, a text by its leading decimal
    /// number (blanks, a sign, digits up to the first other character; beyond 32 bits the low 32 count; 0 when there is none),
    /// any other type as 0.
    int GetValueInteger() const { return m_type == eptInteger ? static_cast<int>(m_number) : ConvertToInteger(); }
    /// The 32 bits of GetValueInteger, unsigned.
    unsigned int GetValueUnsignedInteger() const;
    /// The value as text: numbers in decimal, a boolean as "0" or "1", types without data as "".
    CString GetValueString() const;

    /// Stores @p value converted to the value's type (16-bit types keep its low 16 bits, a boolean is whether it is not 0, a text
    /// its decimal form, types without data store nothing) and reports once.
    void SetValueInteger(int value);
    /// As SetValueInteger, with an unsigned decimal form.
    void SetValueUnsignedInteger(unsigned int value);
    /// Stores @p text, in types other than eptString the number it begins with, and reports once. Null counts as "".
    void SetValueString(const char* text);

    /// The text that @p table has for GetValueInteger(); empty when it has none.
    CString GetValueText(const CBaseIntegerText& table) const;
    /// The text at index GetValueInteger(). Throws: what TextAt of @p texts throws for an index outside it.
    CString GetValueText(const CBaseTextArray& texts) const;

    /// Equality as this value's type sees it: integer types compare integers; a boolean agrees with whether the other's integer
    /// is not 0; a text compares integers with an integer type (so "12abc" equals 12) and texts, by case, with the rest; types
    /// without data equal their own kind; an unknown type equals nothing.
    /// By contract: not symmetric, since this value's type decides. The integer 1 equals the boolean true and the text "1x"; the text
    /// "1x" does not equal true.
    bool operator==(const CPropertyValue& other) const;

protected:
    /// Tells the owning property; nothing without one.
    virtual void OnChangeValue();

private:
    friend class CProperty;
    friend class ::CRegistryPropertyExchange;

    int ConvertToInteger() const;
    void StoreInteger(unsigned int bits);
    template <class SET>
    void ReportTwice(SET set);

    CProperty* m_owner = nullptr;
    EPropertyType m_type = eptNone;
    DWORD m_number = 0;  // whole for 32-bit types; the low 16 bits for 16-bit types, the low byte for booleans
    CString m_text;
};

}  // namespace gen
