// texts_compare.cpp: comparison with texts, literals and units, and construction from them.
// compiles
#include <kelgen/text/WStr.h>

#include <map>
#include <string>

using namespace std::literals;

bool Check(const CWStr& text)
{
    std::map<CWStr, int> byName{{text, 1}};
    return text < text && text == u"x" && u"x" != text && text <= u"x"_w && u"x"_w >= text && byName.contains(text);
}

const CWStr fromLiteral(u"text");
const CWStr fromString(u"text"s);
const CWStr fromView(u"text"sv);
const CWStr fromUnits(u"text"_w);
