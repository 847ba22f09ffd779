// ArchiveTest.cpp: the stored bytes, round trips, objects, and loading of damaged and hostile archives.
#include <kelgen/framework/collections/ArrayTypes.h>
#include <kelgen/framework/collections/ListTypes.h>
#include <kelgen/framework/collections/MapTypes.h>
#include <kelgen/framework/collections/StringArray.h>
#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/files/MemFile.h>

#include "framework/Stored.h"
#include "framework/Thrown.h"
#include "support/Random.h"

#include <functional>
#include <set>

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

/// Loads from @p bytes; returns what was thrown.
template <class CODE>
std::string Load(const std::string& bytes, CODE&& code, int bufferSize = 4096)
{
    std::string copy = bytes;
    CMemFile file(reinterpret_cast<BYTE*>(copy.data()), static_cast<UINT>(copy.size()));
    CArchive archive(&file, CArchive::load, bufferSize);
    return Thrown([&] { code(archive); });
}

std::string Cause(int cause)
{
    return "CArchiveException " + std::to_string(cause);
}

}  // namespace

/// An object that refers to another one.
class CTestNode : public CObject
{
    DECLARE_SERIAL(CTestNode)

public:
    CTestNode() { living.insert(this); }
    ~CTestNode() override { living.erase(this); }
    void Serialize(CArchive& archive) override
    {
        if (archive.IsStoring()) {
            archive << value << static_cast<const CObject*>(next);
        } else {
            schema = archive.GetObjectSchema();
            archive >> value >> next;
        }
    }

    int value = 0;
    UINT schema = 0;
    CTestNode* next = nullptr;
    static inline std::set<CTestNode*> living;
};

class CTestLeaf : public CTestNode
{
    DECLARE_SERIAL(CTestLeaf)
};

class CTestUnstored : public CObject
{
    DECLARE_DYNCREATE(CTestUnstored)
};

IMPLEMENT_SERIAL(CTestNode, CObject, 3 | VERSIONABLE_SCHEMA)
IMPLEMENT_SERIAL(CTestLeaf, CTestNode, 1)
IMPLEMENT_DYNCREATE(CTestUnstored, CObject)

TEST(Archive, StoresTheForm)
{
    EXPECT_EQ("\x12", Stored([](CArchive& a) { a << BYTE{0x12}; }));
    EXPECT_EQ("x", Stored([](CArchive& a) { a << 'x'; }));
    EXPECT_EQ("\x01\0"s, Stored([](CArchive& a) { a << true << false; }));
    EXPECT_EQ("\x34\x12", Stored([](CArchive& a) { a << WORD{0x1234}; }));
    EXPECT_EQ("\xFE\xFF", Stored([](CArchive& a) { a << short{-2}; }));
    EXPECT_EQ("\x78\x56\x34\x12", Stored([](CArchive& a) { a << 0x12345678; }));
    EXPECT_EQ("\xFE\xFF\xFF\xFF", Stored([](CArchive& a) { a << DWORD{0xFFFFFFFE}; }));
    EXPECT_EQ("\xFE\xFF\xFF\xFF", Stored([](CArchive& a) { a << LONG{-2}; }));
    EXPECT_EQ("\xF0\xDE\xBC\x9A\x78\x56\x34\x12", Stored([](CArchive& a) { a << LONGLONG{0x123456789ABCDEF0}; }));
    EXPECT_EQ("\0\0\x80\x3F"s, Stored([](CArchive& a) { a << 1.0f; }));
    EXPECT_EQ("\0\0\0\0\0\0\xF0\x3F"s, Stored([](CArchive& a) { a << 1.0; }));
    EXPECT_EQ("\0"s, Stored([](CArchive& a) { a << CString(); }));
    EXPECT_EQ("\xFE" + std::string(254, 'x'), Stored([](CArchive& a) { a << CString('x', 254); }));
    EXPECT_EQ("\xFF\xFF\0"s + std::string(255, 'x'), Stored([](CArchive& a) { a << CString('x', 255); }));
    EXPECT_EQ("\xFF\xFD\xFF" + std::string(65533, 'x'), Stored([](CArchive& a) { a << CString('x', 65533); }));
    EXPECT_EQ("\xFF\xFF\xFF\xFE\xFF\0\0"s + std::string(65534, 'x'), Stored([](CArchive& a) { a << CString('x', 65534); }));
    EXPECT_EQ("\x03"
              "a\0b"s,
              Stored([](CArchive& a) { a << CString("a\0b", 3); }));
    EXPECT_EQ("\xFE\xFF", Stored([](CArchive& a) { a.WriteCount(0xFFFE); }));
    EXPECT_EQ("\xFF\xFF\xFF\xFF\0\0"s, Stored([](CArchive& a) { a.WriteCount(0xFFFF); }));
    EXPECT_EQ("\x02\0\x01\0\x02\0"s, Stored([](CArchive& a) {
                  CWordArray words;
                  words.Add(1);
                  words.Add(2);
                  words.Serialize(a);
              }));
    EXPECT_EQ("\x02\0\x01"
              "a\0"s,
              Stored([](CArchive& a) {
                  CStringArray texts;
                  texts.Add("a");
                  texts.Add("");
                  texts.Serialize(a);
              }));
    EXPECT_EQ("\0\0"s, Stored([](CArchive& a) { a << static_cast<CObject*>(nullptr); }));
}

TEST(Archive, ObjectsAndClassesAreStoredOnce)
{
    CTestNode node;
    node.value = 7;
    node.next = &node;
    CTestNode other;
    const std::string bytes = Stored([&](CArchive& archive) { archive << &node << &other << &node; });
    EXPECT_EQ("\xFF\xFF\x03\0\x09\0CTestNode\x07\0\0\0\x02\0"s  // new class 1, object 2 that refers to itself
              "\x01\x80\0\0\0\0\0\0"s                           // class 1, object 3 without next
              "\x02\0"s,
              bytes);
    CTestNode* first = nullptr;
    CTestNode* second = nullptr;
    CTestNode* third = nullptr;
    EXPECT_EQ("", Load(bytes, [&](CArchive& archive) { archive >> first >> second >> third; }));
    EXPECT_EQ(first, first->next);
    EXPECT_EQ(first, third);
    EXPECT_EQ(7, first->value);
    EXPECT_EQ(3u, first->schema);
    EXPECT_NE(first, second);
    delete first;
    delete second;
}

TEST(Archive, NumbersAboveTheShortFormRoundTrip)
{
    constexpr int kCount = 0x8010;
    std::vector<CTestNode> nodes(kCount);
    const std::string bytes = Stored([&](CArchive& archive) {
        for (CTestNode& node : nodes)
            archive << &node;
        for (CTestNode& node : nodes)
            archive << &node;
        CTestLeaf leaf;
        archive << &leaf << &leaf;
        CTestLeaf second;
        archive << &second;
    });
    EXPECT_EQ("", Load(bytes, [&](CArchive& archive) {
                  std::vector<CTestNode*> loaded(kCount);
                  for (CTestNode*& node : loaded)
                      archive >> node;
                  for (CTestNode* node : loaded) {
                      CTestNode* again;
                      archive >> again;
                      ASSERT_EQ(node, again);
                  }
                  CTestLeaf* leaf;
                  CTestLeaf* same;
                  CTestLeaf* second;
                  archive >> leaf >> same >> second;
                  EXPECT_EQ(leaf, same);
                  EXPECT_NE(leaf, second);
                  for (CTestNode* node : loaded)
                      delete node;
                  delete leaf;
                  delete second;
              }));
}

TEST(Archive, MappedObjectsTakeANumber)
{
    CTestNode document, part;
    part.next = &document;
    const std::string bytes = Stored([&](CArchive& archive) {
        archive.MapObject(&document);
        archive << &part;
    });
    CTestNode loadedDocument;
    CTestNode* loaded = nullptr;
    EXPECT_EQ("", Load(bytes, [&](CArchive& archive) {
                  archive.MapObject(&loadedDocument);
                  archive >> loaded;
              }));
    EXPECT_EQ(&loadedDocument, loaded->next);
    delete loaded;
}

TEST(Archive, CollectionsRoundTrip)
{
    CTestNode node;
    node.value = 9;
    CObArray objects;
    objects.Add(&node);
    objects.Add(nullptr);
    objects.Add(&node);
    CMapStringToString texts;
    texts["k"] = "v";
    CMapWordToOb byNumber;
    byNumber[5] = &node;
    CStringList names;
    names.AddTail("n");
    CArray<double, double> numbers;
    numbers.SetSize(70'000);
    numbers[69'999] = 1.5;
    CByteArray none;
    const auto all = [](auto& archive, auto&... parts) { (parts.Serialize(archive), ...); };
    const std::string bytes = Stored([&](CArchive& a) { all(a, objects, texts, byNumber, names, numbers, none); }, 128);

    CObArray objects2;
    CMapStringToString texts2;
    texts2["old"] = "kept";
    CMapWordToOb byNumber2;
    CStringList names2;
    names2.AddTail("old");
    CArray<double, double> numbers2;
    CByteArray none2;
    none2.Add(1);
    EXPECT_EQ("", Load(
                      bytes, [&](CArchive& a) { all(a, objects2, texts2, byNumber2, names2, numbers2, none2); }, 128));
    ASSERT_EQ(3, objects2.GetSize());
    const std::unique_ptr<CTestNode> loaded(dynamic_cast<CTestNode*>(objects2[0]));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(9, loaded->value);
    EXPECT_EQ(nullptr, objects2[1]);
    EXPECT_EQ(loaded.get(), objects2[2]);
    EXPECT_EQ(loaded.get(), byNumber2[5]);
    EXPECT_EQ(2, texts2.GetCount()) << "maps and lists gain what is loaded";
    EXPECT_STREQ("v", texts2["k"]);
    EXPECT_STREQ("n", names2.GetTail());
    EXPECT_EQ(2, names2.GetCount());
    EXPECT_EQ(70'000, numbers2.GetSize());
    EXPECT_EQ(1.5, numbers2[69'999]);
    EXPECT_TRUE(none2.IsEmpty()) << "arrays are replaced";
}

TEST(Archive, EveryBufferSizeAndPieceGivesTheSameBytes)
{
    Random random;
    for (int round = 0; round < 100; ++round) {
        std::string model;
        std::vector<std::string> pieces(static_cast<std::size_t>(random.Between(1, 40)));
        for (std::string& piece : pieces) {
            for (int i = random.Between(0, 600); i > 0; --i)
                piece += static_cast<char>(random.Between(0, 255));
            model += piece + "\x05\0"s;
        }
        const std::string bytes = Stored(
            [&](CArchive& archive) {
                for (const std::string& piece : pieces) {
                    archive.Write(piece.data(), static_cast<UINT>(piece.size()));
                    archive << WORD{5};
                }
            },
            random.Between(0, 500));
        ASSERT_EQ(model, bytes);
        ASSERT_EQ("", Load(
                          bytes,
                          [&](CArchive& archive) {
                              for (const std::string& piece : pieces) {
                                  std::string loaded(piece.size(), 0);
                                  ASSERT_EQ(piece.size(), archive.Read(loaded.data(), static_cast<UINT>(piece.size())));
                                  ASSERT_EQ(piece, loaded);
                                  WORD mark;
                                  archive >> mark;
                                  ASSERT_EQ(5, mark);
                              }
                              char more;
                              ASSERT_EQ(0u, archive.Read(&more, 1));
                          },
                          random.Between(0, 500)));
    }
}

TEST(Archive, FlushAndCloseLeaveTheFileAtTheNextByte)
{
    CMemFile file;
    CArchive store(&file, CArchive::store);
    store << 1 << 2;
    EXPECT_EQ(0u, file.GetLength());
    store.Flush();
    EXPECT_EQ(8u, file.GetLength());
    store << 3;
    store.Close();
    EXPECT_EQ(12u, file.GetLength());

    file.SeekToBegin();
    CArchive load(&file, CArchive::load);
    int value;
    load >> value;
    EXPECT_EQ(12u, file.GetPosition()) << "read ahead";
    load.Flush();
    EXPECT_EQ(4u, file.GetPosition());
    load >> value;
    load.Close();
    EXPECT_EQ(2, value);
    EXPECT_EQ(8u, file.GetPosition());
    EXPECT_EQ(Cause(CArchiveException::genericException), Thrown([&] { load >> value; }));
    EXPECT_EQ(Cause(CArchiveException::genericException), Thrown([&] { store << value; }));
}

TEST(Archive, LinesEndAtLineFeedsAndReturns)
{
    const std::string bytes = "ab\r\ncd\n\n" + std::string(128, 'x') + std::string(200, 'y') + "\r\nlast";
    EXPECT_EQ("", Load(
                      bytes,
                      [](CArchive& archive) {
                          CString line;
                          for (const std::string& expected : {"ab"s, "cd"s, ""s, std::string(128, 'x') + std::string(200, 'y'), "last"s}) {
                              ASSERT_TRUE(archive.ReadString(line));
                              EXPECT_EQ(expected, line.GetString());
                          }
                          EXPECT_FALSE(archive.ReadString(line));
                          EXPECT_TRUE(line.IsEmpty());
                      },
                      128));
    EXPECT_EQ("", Load("abcd\nef\r\ng", [](CArchive& archive) {
                  char line[8];
                  EXPECT_STREQ("ab", archive.ReadString(line, 2));
                  EXPECT_STREQ("cd", archive.ReadString(line, 7));
                  EXPECT_STREQ("ef\n", archive.ReadString(line, static_cast<UINT>(-7)));
                  EXPECT_STREQ("g", archive.ReadString(line, 7));
                  EXPECT_EQ(nullptr, archive.ReadString(line, 7));
              }));
    EXPECT_EQ("ab\n", Stored([](CArchive& archive) { archive.WriteString("ab\n"); }));
}

TEST(Archive, WideTextIsConverted)
{
    EXPECT_EQ("", Load("\xFF\xFE\xFF\x02"
                       "a\0\xE9\0"s,
                       [](CArchive& archive) {
                           CString text;
                           archive >> text;
                           EXPECT_EQ(CString(u"a\u00E9"_w), text);
                           EXPECT_EQ(2, text.GetLength());
                       }));
}

TEST(Archive, UseAgainstTheDirectionThrows)
{
    int value = 0;
    CString text;
    CTestNode* node = nullptr;
    char line[8];
    const std::string readOnly = Cause(CArchiveException::readOnly);
    EXPECT_EQ(readOnly, Load("1234", [&](CArchive& archive) { archive << value; }));
    EXPECT_EQ(readOnly, Load("1234", [&](CArchive& archive) { archive << text; }));
    EXPECT_EQ(readOnly, Load("1234", [&](CArchive& archive) { archive << static_cast<CObject*>(nullptr); }));
    EXPECT_EQ(readOnly, Load("1234", [&](CArchive& archive) { archive.Write(line, 1); }));
    Stored([&](CArchive& archive) {
        const std::string writeOnly = Cause(CArchiveException::writeOnly);
        EXPECT_EQ(writeOnly, Thrown([&] { archive >> value; }));
        EXPECT_EQ(writeOnly, Thrown([&] { archive >> text; }));
        EXPECT_EQ(writeOnly, Thrown([&] { archive >> node; }));
        EXPECT_EQ(writeOnly, Thrown([&] { archive.Read(line, 1); }));
        EXPECT_EQ(writeOnly, Thrown([&] { archive.ReadString(line, 1); }));
        CTestUnstored unstored;
        EXPECT_EQ("CNotSupportedException", Thrown([&] { archive << &unstored; }));
        CPtrArray pointers;
        EXPECT_EQ("CNotSupportedException", Thrown([&] { pointers.Serialize(archive); }));
    });
    EXPECT_EQ("CInvalidArgException", Thrown([] { CArchive(nullptr, CArchive::load); }));
}

namespace {

template <class T>
void LoadOne(CArchive& archive)
{
    T value{};
    archive >> value;
}

/// @p count nodes, each inside the one before.
std::string Nested(int count)
{
    std::string bytes = "\xFF\xFF\x03\0\x09\0CTestNode\0\0\0\0"s;
    for (int i = 1; i < count; ++i)
        bytes += "\x01\x80\0\0\0\0"s;
    return bytes + "\0\0"s;
}

template <class COLLECTION>
void LoadCollection(CArchive& archive)
{
    COLLECTION collection;
    collection.Serialize(archive);
}

}  // namespace

TEST(Archive, DamagedOneThrowsItsCauseAndLeavesNothingBehind)
{
    const struct
    {
        const char* name;
        std::string bytes;
        void (*load)(CArchive&);
        int cause;
        std::size_t more = 0;  // bytes that follow
    } rows[] = {
        {"short number", "\x01\x02", LoadOne<int>, CArchiveException::endOfFile},
        {"short text",
         "\x05"
         "abc",
         LoadOne<CString>, CArchiveException::endOfFile},
        {"short text length", "\xFF\x01", LoadOne<CString>, CArchiveException::endOfFile},
        {"hostile text length",
         "\xFF\xFF\xFF\xFF\xFF\xFF\xFF"
         "abc",
         LoadOne<CString>, CArchiveException::endOfFile},
        {"hostile wide length",
         "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x3F"
         "abc",
         LoadOne<CString>, CArchiveException::endOfFile},
        {"two wide markers",
         "\xFF\xFE\xFF\xFF\xFE\xFF"
         "abc",
         LoadOne<CString>, CArchiveException::badIndex},
        {"hostile numbers",
         "\xFF\xFF\xFE\xFF\xFF\x7F"
         "abc",
         LoadCollection<CDWordArray>, CArchiveException::endOfFile},
        {"hostile texts", "\xFF\xFF\xFF\xFF\xFF\xFF", LoadCollection<CStringArray>, CArchiveException::endOfFile},
        {"hostile map", "\xFF\xFF\xFF\xFF\xFF\x00"s, LoadCollection<CMapStringToString>, CArchiveException::endOfFile},
        {"short numbers", "\x03\0\x01\x02\x03\x04\x05"s, LoadCollection<CDWordArray>, CArchiveException::endOfFile},
        {"unknown object", "\x05\0"s, LoadOne<CTestNode*>, CArchiveException::badIndex},
        {"unknown big object", "\xFF\x7F\xFF\xFF\xFF\x7F", LoadOne<CTestNode*>, CArchiveException::badIndex},
        {"unknown class", "\x05\x80", LoadOne<CTestNode*>, CArchiveException::badIndex},
        {"null as class", "\xFF\x7F\0\0\0\x80"s, LoadOne<CTestNode*>, CArchiveException::badIndex},
        {"class as object", "\xFF\xFF\x03\0\x09\0CTestNode\0\0\0\0\x01\0"s, LoadOne<CTestNode*>, CArchiveException::badIndex},
        {"object as class", "\xFF\xFF\x03\0\x09\0CTestNode\0\0\0\0\x02\x80"s, LoadOne<CTestNode*>, CArchiveException::badIndex},
        {"class not listed", "\xFF\xFF\x03\0\x05\0CNope"s, LoadOne<CTestNode*>, CArchiveException::badClass},
        {"class name too long", "\xFF\xFF\x03\0\xFF\xFF"s, LoadOne<CTestNode*>, CArchiveException::badClass, 70'000},
        {"class not storable", "\xFF\xFF\x03\0\x0D\0CTestUnstored"s, LoadOne<CTestNode*>, CArchiveException::badClass},
        {"other class", "\xFF\xFF\0\0\x0A\0CByteArray\0\0"s, LoadOne<CTestNode*>, CArchiveException::badClass},
        {"base instead of derived", "\xFF\xFF\x03\0\x09\0CTestNode\0\0\0\0\0\0"s, LoadOne<CTestLeaf*>, CArchiveException::badClass},
        {"other schema", "\xFF\xFF\x02\0\x09\0CTestLeaf\0\0\0\0\0\0"s, LoadOne<CTestLeaf*>, CArchiveException::badSchema},
        {"one inside too many", Nested(2049), LoadOne<CTestNode*>, CArchiveException::badIndex},
        {"deeper than any stack", Nested(1'000'000), LoadOne<CTestNode*>, CArchiveException::badIndex},
        {"short object", "\xFF\xFF\x03\0\x09\0CTestNode\0\0"s, LoadOne<CTestNode*>, CArchiveException::endOfFile},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Cause(row.cause), Load(row.bytes + std::string(row.more, 'C'), row.load)) << row.name;
        EXPECT_TRUE(CTestNode::living.empty()) << row.name;
    }
}

TEST(Archive, ObjectsLieInsideEachOtherUpToTheBoundBothWays)
{
    const std::string whole = Nested(2048);
    CTestNode* first = nullptr;
    CTestNode* second = nullptr;
    EXPECT_EQ("", Load(whole + "\x01\x80" + whole.substr(15), [&](CArchive& archive) { archive >> first >> second; }))
        << "what is loaded inside nothing counts anew";
    std::vector<std::unique_ptr<CTestNode>> nodes;
    for (CTestNode* node : {second, first})
        for (; node; node = node->next)
            nodes.emplace_back(node);
    ASSERT_EQ(4096u, nodes.size());
    EXPECT_EQ(whole, Stored([&](CArchive& archive) { archive << first; }));

    CTestNode outer;
    outer.next = first;
    Stored([&](CArchive& archive) { EXPECT_EQ(Cause(CArchiveException::badIndex), Thrown([&] { archive << &outer; })); });
}

TEST(Archive, VersionableClassLoadsOtherSchemas)
{
    CTestNode* node = nullptr;
    EXPECT_EQ("", Load("\xFF\xFF\x01\0\x09\0CTestNode\x05\0\0\0\0\0"s, [&](CArchive& archive) { archive >> node; }));
    ASSERT_NE(nullptr, node);
    EXPECT_EQ(1u, node->schema);
    delete node;
}

TEST(Archive, RandomlyDamagedArchivesNeverBreakTheProcess)
{
    Random random;
    CTestNode nodes[3];
    nodes[0].next = &nodes[1];
    nodes[1].next = &nodes[0];
    CObArray objects;
    for (CTestNode& node : nodes)
        objects.Add(&node);
    CMapStringToString texts;
    texts["key"] = CString('v', 300);
    const std::string bytes = Stored([&](CArchive& archive) {
        objects.Serialize(archive);
        texts.Serialize(archive);
    });
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = bytes.substr(0, static_cast<std::size_t>(random.Between(0, static_cast<int>(bytes.size()))));
        for (int i = random.Between(1, 4); i > 0 && !damaged.empty(); --i)
            damaged[static_cast<std::size_t>(random.Between(0, static_cast<int>(damaged.size()) - 1))] =
                static_cast<char>(random.Between(0, 255));
        CObArray loaded;
        Load(damaged, [&](CArchive& archive) {
            loaded.Serialize(archive);
            CMapStringToString loadedTexts;
            loadedTexts.Serialize(archive);
        });
        // The damage may have cut links: what is alive beside our own nodes was loaded.
        for (const std::set<CTestNode*> living = CTestNode::living; CTestNode * node : living) {
            if (node < std::begin(nodes) || node >= std::end(nodes))
                delete node;
        }
    }
}

TEST(Archive, FileThatOverstatesWhatItReadIsHeldToTheRequest)
{
    class OverstatingFile : public CMemFile
    {
    public:
        UINT Read(void*, UINT) override { return 0xFFFFFFF0; }
    } file;
    CArchive archive(&file, CArchive::load, 128);
    char bytes[300] = {};
    EXPECT_EQ(300u, archive.Read(bytes, 300));
    int value = 1;
    archive >> value;
    EXPECT_EQ(0, value);
    archive.Abort();
}

TEST(Archive, FailingFileIsReportedAndTheDestructorIsQuiet)
{
    class FullFile : public CMemFile
    {
    public:
        void Write(const void*, UINT) override { AfxThrowFileException(CFileException::diskFull); }
    } file;
    const std::string full = "CFileException " + std::to_string(CFileException::diskFull);
    CArchive archive(&file, CArchive::store);
    archive << 1;
    EXPECT_EQ(full, Thrown([&] { archive.Flush(); }));
    EXPECT_EQ(full, Thrown([&] { archive.Close(); }));
}
