// ObjectsTest.cpp: texts, containers and what is kept in memory, without memory.
#include "posix/faults/Flow.h"
#include "support/faults/FailingMemory.h"

#include <kelgen/kelgen.h>

#include <gtest/gtest.h>

using namespace kelgen::test;

namespace {

const CString kLong('x', 300);

}  // namespace

TEST(WithoutMemory, NarrowStrings)
{
    CString kept = "kept";
    RunFlow(
        [&] {
            CString text = kept;
            text += kLong;
            text.Format("%s %d", kLong.GetString(), 7);
            text.Replace("x", "yy");
            text.MakeUpper();
            kept = text.Left(4);
            return Outcome{true};
        },
        [&] { EXPECT_EQ(4, kept.GetLength()); });
}

TEST(WithoutMemory, WideStrings)
{
    CWStr kept = u"kept"_w;
    RunFlow(
        [&] {
            CWStr text = kept;
            for (int i = 0; i < 100; ++i)
                text += u"0123456789"_w;
            text.Format(u"%d"_w, 7);
            text += u"0 and more that is long enough"_w;
            text.Replace(u"0"_w, u"zero"_w);
            BSTR const system = text.AllocSysString();
            SysFreeString(system);
            kept = text.Left(4);
            return Outcome{true};
        },
        [&] { EXPECT_EQ(4, kept.GetLength()); });
}

TEST(WithoutMemory, Arrays)
{
    CStringArray strings;
    CArray<int, int> numbers;
    CFastArray<CString> fast;
    RunFlow(
        [&] {
            for (int i = 0; i < 40; ++i) {
                strings.Add(kLong);
                numbers.Add(i);
                fast.Add(kLong);
            }
            strings.InsertAt(3, "inserted", 5);
            strings.RemoveAll();
            numbers.RemoveAll();
            fast.RemoveAll();
            return Outcome{true};
        },
        [&] {
            for (int i = 0; i < strings.GetSize(); ++i)
                EXPECT_FALSE(strings[i].IsEmpty());
            for (int i = 0; i < numbers.GetSize(); ++i)
                EXPECT_EQ(i, numbers[i]);
            for (int i = 0; i < fast.GetCount(); ++i)
                EXPECT_EQ(kLong, fast[i]);
            strings.RemoveAll();
            numbers.RemoveAll();
            fast.RemoveAll();
        });
}

TEST(WithoutMemory, MapsAndLists)
{
    CMapStringToString map;
    CStringList list;
    RunFlow(
        [&] {
            for (int i = 0; i < 40; ++i) {
                CString key;
                key.Format("%d", i);
                map.SetAt(key, kLong);
                list.AddTail(key);
            }
            map.RemoveAll();
            list.RemoveAll();
            return Outcome{true};
        },
        [&] {
            EXPECT_GE(list.GetCount() + 1, map.GetCount());
            map.RemoveAll();
            list.RemoveAll();
        });
}

TEST(WithoutMemory, Archives)
{
    CMemFile file;
    RunFlow(
        [&] {
            file.SeekToBegin();
            CStringArray strings;
            strings.Add("first");
            strings.Add(kLong);
            {
                CArchive archive(&file, CArchive::store, 512);
                strings.Serialize(archive);
                archive << CString("last") << 5;
                archive.Close();
            }
            file.SeekToBegin();
            CArchive archive(&file, CArchive::load, 512);
            CStringArray read;
            read.Serialize(archive);
            CString last;
            archive >> last;
            return Outcome{read.GetSize() == 2 && last == "last"};
        },
        [&] { EXPECT_LT(file.GetLength(), 4096u); });
}

TEST(WithoutMemory, PropertySets)
{
    gen::CPropertySet set;
    RunFlow(
        [&] {
            gen::CPropertySet made;
            for (int i = 0; i < 5; ++i) {
                gen::CProperty property(i, kLong, gen::eptString);
                property.GetValue().SetValueString(kLong);
                made.AddProperty(property);
            }
            set = made;
            set.Set(3, set.PropertyAt(2).GetValue());
            return Outcome{set == made};
        },
        [&] {
            for (int i = 0; i < set.GetPropertyCount(); ++i)
                EXPECT_EQ(&set, set.PropertyAt(i).GetSet());
        });
}

TEST(WithoutMemory, AutomationValues)
{
    RunFlow([] {
        CWStr text = u"12"_w;
        VARIANT value;
        VariantInit(&value);
        value.vt = VT_BSTR;
        value.bstrVal = text.AllocSysString();
        VARIANT copy;
        VariantInit(&copy);
        const HRESULT result = VariantCopy(&copy, &value);
        VariantClear(&copy);
        VariantClear(&value);
        SAFEARRAY* const array = SafeArrayCreateVector(VT_I4, 0, 100);
        if (array)
            SafeArrayDestroy(array);
        return Outcome{SUCCEEDED(result) && array, ERROR_OUTOFMEMORY};
    });
}

TEST(WithoutMemory, FormattedMessages)
{
    RunFlow([] {
        char* text = nullptr;
        const DWORD length = FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM, nullptr, ERROR_FILE_NOT_FOUND, 0,
                                            reinterpret_cast<LPSTR>(&text), 0, nullptr);
        const Outcome outcome = Outcome::Of(length != 0);
        LocalFree(text);
        return outcome;
    });
}

TEST(Storage, AContainersOwnGoesWithIt)
{
    const auto use = [] {
        CMemoryStorageContainer container(DWORD{512});
        container.Allocate(1000);
    };
    use();
    const std::ptrdiff_t before = LiveBlocks();
    use();
    EXPECT_EQ(before, LiveBlocks());
}
