// PropertyValue.cpp: conversion between the types, and the report to the owning property.
#include <kelgen/property/PropertyValue.h>

#include <kelgen/property/Property.h>
#include <kelgen/text/IntegerText.h>
#include <kelgen/text/internal/DecimalText.h>

namespace gen {

using kelgen::detail::DecimalText;
using kelgen::detail::ReadDecimal;

/// @p set reports, and this does once more, unless a listener ends the property.
template <class SET>
void CPropertyValue::ReportTwice(SET set)
{
    if (m_owner == nullptr) {
        set();
        OnChangeValue();
        return;
    }
    const kelgen::detail::PresenceWatch watch(m_owner->m_presence);
    set();
    if (!watch.IsGone())
        OnChangeValue();
}

CPropertyValue::CPropertyValue(int value) : m_type(eptInteger), m_number(static_cast<DWORD>(value))
{
    OnChangeValue();
}

CPropertyValue::CPropertyValue(const char* text) : m_type(eptString), m_text(text)
{
    OnChangeValue();
}

CPropertyValue::CPropertyValue(bool value) : m_type(eptBool), m_number(value ? 1 : 0)
{
    OnChangeValue();
}

CPropertyValue::CPropertyValue(unsigned int value) : m_type(eptUnsignedInteger), m_number(value)
{
    OnChangeValue();
}

CPropertyValue::CPropertyValue(const CPropertyValue& other)
{
    *this = other;
}

CPropertyValue& CPropertyValue::operator=(const CPropertyValue& other)
{
    m_type = other.m_type;
    m_number = other.m_number;
    m_text = other.m_text;
    OnChangeValue();
    return *this;
}

CPropertyValue& CPropertyValue::operator=(int value)
{
    ReportTwice([&] { SetValueInteger(value); });
    return *this;
}

CPropertyValue& CPropertyValue::operator=(short value)
{
    return *this = int{value};
}

CPropertyValue& CPropertyValue::operator=(bool value)
{
    return *this = value ? 1 : 0;
}

CPropertyValue& CPropertyValue::operator=(unsigned int value)
{
    ReportTwice([&] { SetValueUnsignedInteger(value); });
    return *this;
}

CPropertyValue& CPropertyValue::operator=(unsigned short value)
{
    return *this = static_cast<unsigned int>(value);
}

CPropertyValue& CPropertyValue::operator=(const char* text)
{
    ReportTwice([&] { SetValueString(text); });
    return *this;
}

int CPropertyValue::ConvertToInteger() const
{
    switch (m_type) {
    case eptInteger:
    case eptUnsignedInteger:
        return static_cast<int>(m_number);
    case eptShort:
        return static_cast<short>(m_number);
    case eptUnsignedShort:
        return static_cast<unsigned short>(m_number);
    case eptString:
        return ReadDecimal(m_text);
    case eptBool:
        return (m_number & 0xFF) != 0 ? 1 : 0;
    default:
        return 0;
    }
}

unsigned int CPropertyValue::GetValueUnsignedInteger() const
{
    return static_cast<unsigned int>(GetValueInteger());
}

CString CPropertyValue::GetValueString() const
{
    switch (m_type) {
    case eptInteger:
    case eptShort:
    case eptBool:
        return DecimalText(GetValueInteger()).Get();
    case eptUnsignedInteger:
    case eptUnsignedShort:
        return DecimalText(GetValueUnsignedInteger()).Get();
    case eptString:
        return m_text;
    default:
        return CString();
    }
}

// A narrow type writes only its own part of the number: the rest shows again when the type is set back.
void CPropertyValue::StoreInteger(unsigned int bits)
{
    switch (m_type) {
    case eptInteger:
    case eptUnsignedInteger:
        m_number = bits;
        break;
    case eptShort:
    case eptUnsignedShort:
        m_number = (m_number & 0xFFFF0000) | (bits & 0xFFFF);
        break;
    case eptBool:
        m_number = (m_number & 0xFFFFFF00) | (bits != 0 ? 1 : 0);
        break;
    default:
        break;
    }
}

void CPropertyValue::SetValueInteger(int value)
{
    if (m_type == eptString)
        m_text = DecimalText(value).Get();
    else
        StoreInteger(static_cast<unsigned int>(value));
    OnChangeValue();
}

void CPropertyValue::SetValueUnsignedInteger(unsigned int value)
{
    if (m_type == eptString)
        m_text = DecimalText(value).Get();
    else
        StoreInteger(value);
    OnChangeValue();
}

void CPropertyValue::SetValueString(const char* text)
{
    if (m_type == eptString)
        m_text = text;
    else
        StoreInteger(static_cast<unsigned int>(ReadDecimal(text)));
    OnChangeValue();
}

CString CPropertyValue::GetValueText(const CBaseIntegerText& table) const
{
    CString text;
    table.MapAt(GetValueInteger(), text);
    return text;
}

CString CPropertyValue::GetValueText(const CBaseTextArray& texts) const
{
    return texts.TextAt(GetValueInteger());
}

bool CPropertyValue::operator==(const CPropertyValue& other) const
{
    switch (m_type) {
    case eptNone:
    case eptUndefined:
        return other.m_type == m_type;
    case eptInteger:
    case eptUnsignedInteger:
    case eptShort:
    case eptUnsignedShort:
        return GetValueInteger() == other.GetValueInteger();
    case eptString:
        if (other.IsInteger())
            return GetValueInteger() == other.GetValueInteger();
        return m_text == other.GetValueString();
    case eptBool:
        return (GetValueInteger() != 0) == (other.GetValueInteger() != 0);
    default:
        return false;
    }
}

void CPropertyValue::OnChangeValue()
{
    if (m_owner != nullptr)
        m_owner->OnChangeValue();
}

}  // namespace gen
