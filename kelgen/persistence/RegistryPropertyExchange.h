// RegistryPropertyExchange.h: a property set kept as the text values of a registry key.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/persistence/Registry.h>
#include <kelgen/property/PropertySet.h>

/// Writes the properties of a set to a registry key and loads them back: one REG_SZ value for each, named as the property, its
/// data the value as text (a boolean as "1" or "0"). Properties of type eptNone and eptUndefined are neither written nor loaded.
///
///     CRegistryPropertyExchange exchange;
///     exchange.propertySet = &settings;
///     if (!exchange.key.OpenKey(HKEY_CURRENT_USER, "Software\\Example") || !exchange.TryLoad())
///         ...  // nothing was loaded
///
/// By contract: Load resets what it cannot read, so that no property keeps a value that the registry does not have. Without an open key
/// that is every property of the set; TryLoad leaves them alone then.
///
/// Listeners of the set may replace its properties, the set and this object's members while a property is loaded.
/// A copy works on the same set and shares the key's handle.
class KELGEN_API CRegistryPropertyExchange
{
public:
    CRegistryPropertyExchange() = default;
    CRegistryPropertyExchange(const CRegistryPropertyExchange&) = default;
    CRegistryPropertyExchange& operator=(const CRegistryPropertyExchange&) = default;
    virtual ~CRegistryPropertyExchange() = default;

    /// Writes @p property, suppressed or not. A failure is not reported.
    void StrWrite(gen::CProperty& property);
    /// Loads @p property, suppressed or not. Numbers are the leading decimal number of the text: short and unsigned short keep its
    /// low 16 bits, a boolean is whether it is not 0.
    /// By contract: a value that is missing or not REG_SZ resets the property to 0, false or "", see the class. The property reports
    /// twice, as every assignment does: in the setter and once more after it; one without a loadable type reports once.
    void StrLoad(gen::CProperty& property);

    /// Calls StrWrite, unless suppressed.
    void Write(gen::CProperty& property);
    /// Calls StrLoad, unless suppressed.
    void Load(gen::CProperty& property);
    /// Writes every property of the set, in its order; nothing without a set or when suppressed.
    void Write();
    /// Loads every property of the set, in its order; nothing without a set or when suppressed.
    /// By contract: without an open key resets every property to 0, false or "", as for missing values.
    void Load();
    /// As Load, but false, and nothing changed, when the key cannot be read: it is not open, or has been closed or deleted. A value that
    /// is missing resets its property here too.
    bool TryLoad();

    gen::CPropertySetLink propertySet;  ///< not owned; null when the set is destroyed
    DWORD suppressed = 0;               ///< not 0: Write and Load do nothing
    CRegistry::CKey key;                ///< holds the values; the host opens it

private:
    kelgen::detail::Presence m_presence;
};
