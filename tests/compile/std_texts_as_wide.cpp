// std_texts_as_wide.cpp: 16-bit text of the standard library and literals, wherever a string takes text.
// compiles
#include <kelgen/text/WStr.h>

#include <string>

CWStr Check(CWStr& text, const std::u16string& units, std::u16string_view view)
{
    text = u"text";
    text = units;
    text = view;
    text = nullptr;
    text = u"text"_w;
    text += u"text";
    text += units;
    text += view;
    text += u'x';
    return u"text" + text + u"text" + units + view + u"text"_w;
}
