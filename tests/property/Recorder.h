// Recorder.h: listeners that write down what they are told, and sets to tell them.
#pragma once

#include <kelgen/property/PropertySet.h>

#include <functional>
#include <string>
#include <vector>

namespace kelgen::test {

/// What was told, in order, each entry as "who:property=value".
using Log = std::vector<std::string>;

/// Writes every call into a log that several may share, then runs a reaction, if any.
class Recorder : public gen::CPropertySetListener
{
public:
    Recorder(std::string name, Log& log) : m_name(std::move(name)), m_log(log) {}

    std::function<void(gen::CPropertySet& set, gen::CProperty& property)> react;

protected:
    void OnPropertyValueChange(gen::CPropertySet* set, gen::CProperty* property) override
    {
        EXPECT_EQ(set, property->GetSet());
        m_log.push_back(m_name + ":" + property->GetName().GetString() + "=" + property->GetValue().GetValueString().GetString());
        if (const auto reaction = react)  // a copy: it may set another
            reaction(*set, *property);
    }

private:
    std::string m_name;
    Log& m_log;
};

/// Appends a property of type eptInteger that holds 0.
inline void AddInteger(gen::CPropertySet& set, int id, const char* name)
{
    gen::CProperty property(id, name, gen::eptInteger);
    set.AddProperty(property);
}

}  // namespace kelgen::test
