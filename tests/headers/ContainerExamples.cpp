// ContainerExamples.cpp: the examples of the headers of containers, and of the framework's base and collections.
#include <kelgen/kelgen.h>

#include <cstring>

namespace {

// quote kelgen/containers/BaseArray.h
int Ascending(const int& a, const int& b)
{
    return a < b ? -1 : a > b;
}
// end

// quote kelgen/containers/StdSort.h
void Follow(void* names, int i, int j)
{
    static_cast<CFastArray<CString>*>(names)->Swap(i, j);
}
// end

// quote kelgen/containers/BaseId.h
class Job : public CBaseIdentifiable
{
public:
    Job() : CBaseIdentifiable("Job") {}
};
// end

template <class ARRAY>
std::string Joined(const ARRAY& array)
{
    std::string text;
    for (int i = 0; i < array.GetSize(); ++i)
        text += std::to_string(array[i]) + ' ';
    return text;
}

}  // namespace

TEST(HeaderExamples, OfArrays)
{
    // quote kelgen/containers/BaseArray.h
    CBaseArray<int, int> numbers(3, 7, 5, 6);  // three values: 7, 5, 6
    numbers.BubbleSort(Ascending);             // 5, 6, 7
    int last = numbers.Pop();                  // 7
    // end
    EXPECT_EQ("5 6 ", Joined(numbers));
    EXPECT_EQ(7, last);
}

TEST(HeaderExamples, OfPlainArrays)
{
    // quote kelgen/framework/collections/Array.h
    CArray<int, int> numbers;
    numbers.Add(7);
    numbers.SetAtGrow(3, 9);  // 7, 0, 0, 9
    // end
    EXPECT_EQ("7 0 0 9 ", Joined(numbers));
}

TEST(HeaderExamples, OfComparableArrays)
{
    // quote kelgen/containers/BaseComparableArray.h
    CBaseComparableArray<int> numbers(4, 2, 1, 2, 2);
    numbers.Remove(2);    // 3: that many went; 1 is left
    numbers.Contains(1);  // true
    // end
    EXPECT_EQ("1 ", Joined(numbers));
}

TEST(HeaderExamples, OfIdentifiers)
{
    EXPECT_FALSE(Job().GetId() == Job().GetId());
}

TEST(HeaderExamples, OfNumbers)
{
    // quote kelgen/containers/BaseIntArray.h
    CBaseIntArray numbers;
    numbers.AddString("3;1;;2", ";", true, -1);  // 3, 1, -1, 2
    CString text;
    numbers.FormatString(text, "%d", ", ");  // "3, 1, -1, 2"
    // end
    EXPECT_STREQ("3, 1, -1, 2", text);
}

TEST(HeaderExamples, OfRows)
{
    // quote kelgen/containers/Fast2DWStrArray.h
    CFast2DWStrArray rows;
    rows.EnsureSize(2);
    rows[0].Add(u"name"_w);
    rows.RemoveAll();    // no row, and all rows are empty
    rows.EnsureSize(1);  // the first row again, with no entry
    // end
    EXPECT_EQ(1, rows.GetSize());
    EXPECT_EQ(0, rows[0].GetSize());
}

TEST(HeaderExamples, OfFastArrays)
{
    // quote kelgen/containers/FastArray.h
    CFastArray<CString, const CString&> names;
    names.Add("one");
    names.Add("two");
    names.RemoveAll();   // GetSize() is 0; both slots keep their texts
    names.Add("three");  // GetSize() is 1; assigned into the first slot
    // end
    EXPECT_EQ(1, names.GetSize());
    names.EnsureSize(2);
    EXPECT_STREQ("three", names[0]);
    EXPECT_STREQ("two", names[1]);
}

TEST(HeaderExamples, OfMemory)
{
    unsigned char data[100] = {1, 2, 3};
    // quote kelgen/containers/MemoryStorage.h
    CMemoryStorage bytes(nullptr);
    bytes.Allocate(100);
    std::memcpy(bytes.GetAllocation(), data, 100);
    // end
    EXPECT_EQ(100u, bytes.GetStorageSize());

    CMemoryStorageContainer container(0);
    container.Allocate(10);
    // quote kelgen/containers/MemoryStorage.h#2
    unsigned char* cursor = container.GetAllocation() + 7;  // into the block, or an offset while there is none
    container.KeepStoragePointer(reinterpret_cast<void**>(&cursor));
    // end
    container.Allocate(1'000'000);
    EXPECT_EQ(container.GetAllocation() + 7, cursor);
}

TEST(HeaderExamples, OfSorting)
{
    CBaseArray<DWORD, DWORD> ids(3, 30, 10, 20);
    CFastArray<CString> names;
    for (const char* name : {"thirty", "ten", "twenty"})
        names.Add(name);
    // quote kelgen/containers/StdSort.h
    CStdSort::QuickSort(ids, CStdSort::DWordCompare, Follow, &names);
    // end
    EXPECT_EQ("10 20 30 ", Joined(ids));
    EXPECT_STREQ("ten", names[0]);
    EXPECT_STREQ("thirty", names[2]);
}

TEST(HeaderExamples, OfLists)
{
    int used = 0;
    const auto Use = [&used](int number) { used += number; };
    // quote kelgen/framework/collections/List.h
    CList<int, int> numbers;
    numbers.AddTail(7);
    for (POSITION position = numbers.GetHeadPosition(); position != nullptr;)
        Use(numbers.GetNext(position));
    // end
    EXPECT_EQ(7, used);
}

TEST(HeaderExamples, OfMaps)
{
    std::string seen;
    // quote kelgen/framework/collections/Map.h
    CMap<int, int, CString, const CString&> names;
    names.SetAt(1, "one");
    for (POSITION position = names.GetStartPosition(); position != nullptr;) {
        int key;
        CString name;
        names.GetNextAssoc(position, key, name);
        // end
        seen += std::to_string(key) + name.GetString();
        // quote kelgen/framework/collections/Map.h
    }
    // end
    EXPECT_EQ("1one", seen);
}

TEST(HeaderExamples, OfStrings)
{
    const CString folder = "C:\\Data";
    const CString name = "Rates.INI";
    std::string opened;
    const auto Open = [&opened](const CString& path) { opened = path.GetString(); };
    // quote kelgen/framework/base/String.h
    CString path = folder + "\\" + name;
    path.MakeLower();
    if (path.Right(4) == ".ini")
        Open(path);
    // end
    EXPECT_EQ("c:\\data\\rates.ini", opened);
}

TEST(HeaderExamples, OfLocks)
{
    struct
    {
        CCriticalSection m_section;
        bool IsLocked()
        {
            // quote kelgen/framework/base/Synchronization.h
            CSingleLock lock(&m_section, TRUE);
            // end
            return lock.IsLocked() != FALSE;
        }
    } object;
    EXPECT_TRUE(object.IsLocked());
}

namespace {

/// What the examples of exceptions load: nothing, which ends too early.
class Empty
{
public:
    CMemFile file;
    CArchive archive{&file, CArchive::load};
};

void Load(CArchive& archive)
{
    int number;
    archive >> number;
}

}  // namespace

TEST(HeaderExamples, OfExceptions)
{
    Empty empty;
    CArchive& archive = empty.archive;
    int reported = 0;
    // quote kelgen/framework/base/Exceptions.h
    try {
        Load(archive);
    } catch (CArchiveException* e) {
        const int cause = e->m_cause;
        e->Delete();
        // end
        EXPECT_EQ(CArchiveException::endOfFile, cause);
        // quote kelgen/framework/base/Exceptions.h
    }
    // end
    const auto Report = [&reported](int cause) { reported = cause; };
    // quote kelgen/framework/base/Exceptions.h#2
    TRY
    {
        Load(archive);
    }
    CATCH(CArchiveException, e)
    {
        Report(e->m_cause);
    }
    AND_CATCH(CFileException, e)
    {
        THROW_LAST();
    }
    END_CATCH
    // end
    EXPECT_EQ(CArchiveException::endOfFile, reported);
}
