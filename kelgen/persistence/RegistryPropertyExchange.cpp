// RegistryPropertyExchange.cpp: properties to and from text values.
#include <kelgen/persistence/RegistryPropertyExchange.h>

namespace {

bool IsExchanged(gen::EPropertyType type)
{
    return type >= gen::eptInteger && type <= gen::eptBool;
}

}  // namespace

void CRegistryPropertyExchange::StrWrite(gen::CProperty& property)
{
    const gen::CPropertyValue& value = property.GetValue();
    if (IsExchanged(value.GetType()))
        key.SetValue(property.GetName(), value.GetValueString());
}

void CRegistryPropertyExchange::StrLoad(gen::CProperty& property)
{
    gen::CPropertyValue& value = property.GetValue();
    const kelgen::detail::PresenceWatch watch(property.m_presence);
    if (IsExchanged(value.GetType())) {
        CString text;
        key.QueryValue(property.GetName(), text);
        // The value converts the text into its type by the same rules as the stored form: decimal, cut to the type's width.
        value.SetValueString(text);
    }
    if (!watch.IsGone())
        value.OnChangeValue();
}

void CRegistryPropertyExchange::Write(gen::CProperty& property)
{
    if (suppressed == 0)
        StrWrite(property);
}

void CRegistryPropertyExchange::Load(gen::CProperty& property)
{
    if (suppressed == 0)
        StrLoad(property);
}

void CRegistryPropertyExchange::Write()
{
    for (int i = 0; propertySet && i < propertySet->GetPropertyCount(); ++i)
        Write(propertySet->PropertyAt(i));
}

void CRegistryPropertyExchange::Load()
{
    const kelgen::detail::PresenceWatch watch(m_presence);
    for (int i = 0; !watch.IsGone() && propertySet && i < propertySet->GetPropertyCount(); ++i)
        Load(propertySet->PropertyAt(i));
}

bool CRegistryPropertyExchange::TryLoad()
{
    // A missing value is an answer of a key that is there.
    const LONG result =
        key.GetHandle() ? ::RegQueryValueExA(key.GetHandle(), "", nullptr, nullptr, nullptr, nullptr) : ERROR_INVALID_HANDLE;
    if (result != ERROR_SUCCESS && result != ERROR_FILE_NOT_FOUND)
        return false;
    Load();
    return true;
}
