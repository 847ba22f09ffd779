// Profile.cpp: any bytes as an initialization file: unchanged unless edited, and an edit is found again.
#include "Input.h"

#include <kelgen/platform/posix/registry/ProfileText.h>

using namespace kelgen::posix;

using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    ProfileText text(bytes);
    Require(text.Bytes() == bytes);
    for (const std::u16string& section : text.Sections()) {
        const auto keys = text.Keys(section);
        Require(keys.has_value());
        text.Entries(section);
        for (const std::u16string& key : *keys)
            text.Value(section, key);
    }

    text.SetValue(u"s", u"new", u"value");
    Require(ProfileText(text.Bytes()).Value(u"s", u"new") == u"value");
    const std::size_t sections = text.Sections().size();
    text.RemoveSection(u"s");
    Require(ProfileText(text.Bytes()).Sections().size() == sections - 1);
    return 0;
}
