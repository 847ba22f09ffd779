// values_take_numbers_and_texts.cpp: what a property value can be made of.
// compiles
#include <kelgen/property/PropertySet.h>

int Check(gen::CPropertySet& set, const gen::CPropertySet& constant, unsigned number, DWORD word, LONG size, long wide, const CString& text)
{
    set.Set("a", 1);
    set.Set("a", number);
    set.Set("a", word);
    set.Set("a", size);
    set.Set("a", wide);
    set.Set("a", true);
    set.Set("a", "text");
    set.Set("a", text);
    set.Set("a", nullptr);
    gen::CPropertyValue value(number);
    value = size;
    value = word;
    value = wide;
    value = text;
    value = "text";
    value = false;
    set.AddProperty(gen::CProperty(1, "a", gen::eptInteger));
    return constant["a"] != nullptr && constant[1] != nullptr && constant.Get("a", value) && constant.FindFirst("a", 0) != nullptr;
}
