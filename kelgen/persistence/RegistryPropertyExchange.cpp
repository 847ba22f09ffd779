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
    if (IsExchanged(value.GetType())) {
        CString text;
        key.QueryValue(property.GetName(), text);
        // The value converts the text into its type by the same rules as the stored form: decimal, cut to the type's width.
        value.SetValueString(text);
    }
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
    if (propertySet == nullptr)
        return;
    for (int i = 0; i < propertySet->GetPropertyCount(); ++i)
        Write(propertySet->PropertyAt(i));
}

void CRegistryPropertyExchange::Load()
{
    if (propertySet == nullptr)
        return;
    for (int i = 0; i < propertySet->GetPropertyCount(); ++i)
        Load(propertySet->PropertyAt(i));
}
