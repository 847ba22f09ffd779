// std_texts_in_members.cpp: 16-bit text of the standard library and literals, wherever a member takes terminated text.
// compiles
#include <kelgen/framework/base/String.h>
#include <kelgen/text/WStrArray.h>

#include <string>

int Check(CWStr& text, CWStrArray& texts, const std::u16string& units, std::u16string_view view, const std::string& narrow)
{
    text.TrimRight(units);
    text.Format(units, 1);
    text.Format(u"%s", u"text"_w);
    text.Insert(1, view);
    texts.Add(u"text");
    texts.AddUnique(view);
    texts.AddTokens(units, u",", true);
    const CString fromStandard(narrow);
    const CString fromWide(text);
    const bool isEqual = text == units || view == text || text < view || text == u"x" || text == u"x"_w;
    return isEqual + text.Find(units) + text.Find(view, 1) + text.Find(u'x') + text.Find('x') + text.Find(nullptr) + text.Collate(units) +
           texts.FindFirstNoCase(view) + text.Replace('a', 'b') + text.Replace(u"a"_w, nullptr) + text.Replace(units, view);
}
