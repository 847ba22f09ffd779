// Program.cpp: values of each kind that the debugger's printers show, and a function to stop in.
#include <kelgen/kelgen.h>

extern "C" [[gnu::noinline]] void StopHere(const void* values)
{
    asm volatile("" : : "r"(values) : "memory");
}

int main()
{
    CWStr wide(u"w\u00E4hle \U0001F600"_w);
    CString narrow("narrow");
    CStr named;
    named = CString("named");
    CWStrArray texts;
    texts.Add(u"one"_w);
    texts.Add(u"two"_w);
    texts.RemoveAt(1);
    CList<int, int> list;
    list.AddTail(3);
    list.AddTail(4);
    CMap<int, int, CString, const CString&> map;
    map.SetAt(7, "seven");
    gen::CPropertySet set;
    gen::CProperty width(1, "width", gen::eptInteger);
    width.GetValue() = -5;
    set.AddProperty(width);
    gen::CPropertyValue text("text");
    CMemoryStorage memory(nullptr);
    unsigned char bytes[] = {1, 2, 255};
    memory.SetDataAndSize(bytes, 3);
    COleDateTime date(2026, 11, 22, 3, 4, 5);

    const void* const values[] = {&wide, &narrow, &named, &texts, &list, &map, &set, &text, &memory, &date};
    StopHere(values);
    return 0;
}
