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

    COleDateTimeSpan span(-2, -3, -4, -5);
    FILETIME written = {0xD53E8000, 0x019DB1DE};
    SYSTEMTIME noon = {2026, 11, 0, 22, 12, 1, 2, 3};
    {
        CStdioFile file("shown.ini", CFile::modeCreate | CFile::modeWrite);
        file.WriteString("[Main]\nTitle=x\nplain\n[Next]\n");
    }
    _kelgen::CIniFile ini("shown.ini");
    ::DeleteFileA("shown.ini");
    HWND window = ::CreateWindowExA(0, "Static", "shown", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    HWND gone = reinterpret_cast<HWND>(ULONG_PTR{0x7FFF0040});
    HANDLE event = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);

    const void* const values[] = {&wide, &narrow, &named,   &texts, &list, &map,    &set,  &text, &memory,
                                  &date, &span,   &written, &noon,  &ini,  &window, &gone, &event};
    StopHere(values);
    return 0;
}
