// StringTest.cpp: sharing, locking and buffers of CString, and random use against the standard string.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/String.h>

#include "support/Random.h"

#include <cstring>
#include <thread>
#include <utility>

using namespace kelgen::test;

TEST(String, CopiesShareUntilOneIsWritten)
{
    CString first("abc"), second = first;
    EXPECT_EQ(first.GetString(), second.GetString());
    EXPECT_EQ(first.GetString(), first.Mid(0).GetString());
    second.SetAt(1, 'X');
    EXPECT_EQ("abc", first);
    EXPECT_EQ("aXc", second);

    CString third = first;
    third += 'd';
    third.MakeUpper();
    EXPECT_EQ("abc", first);
    EXPECT_EQ("ABCD", third);
}

TEST(String, EveryEmptyStringIsTheSame)
{
    const CString empty;
    CString emptied("text");
    emptied.Empty();
    const CString null(static_cast<LPCSTR>(nullptr));
    for (const CString& string : {emptied, null, CString(""), CString("abc", 0), CString('x', 0), CString("abc").Left(0), empty + ""})
        EXPECT_EQ(empty.GetString(), string.GetString());
    EXPECT_EQ(0, empty.GetAllocLength());
}

TEST(String, SurvivesBeingMovedBitByBit)
{
    alignas(CString) char from[sizeof(CString)];
    alignas(CString) char to[sizeof(CString)];
    new (from) CString("moved");
    std::memcpy(to, from, sizeof from);
    const auto moved = reinterpret_cast<CString*>(to);
    EXPECT_EQ("moved", *moved);
    moved->~CString();
}

TEST(String, LockedTextIsNotSharedAndStaysInPlace)
{
    CString string("abcdef");
    const CString sharer = string;
    LPSTR const buffer = string.LockBuffer();
    EXPECT_NE(sharer.GetString(), buffer);
    const CString copy = string;
    EXPECT_NE(copy.GetString(), buffer);
    string = CString("xy");
    EXPECT_EQ(buffer, string.GetString());
    string.Empty();
    EXPECT_EQ(buffer, string.GetString());
    string.Format("%d", 42);
    EXPECT_EQ(buffer, string.GetString());
    EXPECT_EQ("42", string);
    string.UnlockBuffer();
    const CString shared = string;
    EXPECT_EQ(string.GetString(), shared.GetString());

    CString empty;
    empty.UnlockBuffer();
    empty.LockBuffer();
    EXPECT_NE(CString().GetString(), empty.GetString());
}

TEST(String, BufferIsWrittenAndReleased)
{
    CString string("abc");
    const CString sharer = string;
    std::strcpy(string.GetBuffer(20) + 3, "defg");
    string.ReleaseBuffer();
    EXPECT_EQ("abcdefg", string);
    EXPECT_EQ("abc", sharer);

    string.GetBuffer(3)[0] = 'X';
    string.ReleaseBuffer(2);
    EXPECT_EQ("Xb", string);
    std::memcpy(string.GetBufferSetLength(4), "a\0b\0", 4);
    EXPECT_EQ(4, string.GetLength());
    string.ReleaseBuffer();
    EXPECT_EQ("a", string);

    CString full;
    char* const whole = full.GetBuffer(7);
    std::memset(whole, 'w', static_cast<std::size_t>(full.GetAllocLength()));
    full.ReleaseBuffer();
    EXPECT_EQ(full.GetAllocLength(), full.GetLength()) << "without a terminator the whole buffer is text";

    CString untouched("keep");
    const CString other = untouched;
    untouched.ReleaseBuffer(2);
    EXPECT_EQ("ke", untouched);
    EXPECT_EQ("keep", other);
    CString().ReleaseBuffer();
}

TEST(String, MisuseThrowsBeforeAnythingChanges)
{
    CString string("abc");
    EXPECT_EQ('\0', string[3]);
    EXPECT_THROW(string.GetAt(4), CInvalidArgException*);
    EXPECT_THROW(string.GetAt(-1), CInvalidArgException*);
    EXPECT_THROW(string.SetAt(3, 'x'), CInvalidArgException*);
    EXPECT_THROW(string.GetBuffer(-1), CInvalidArgException*);
    EXPECT_THROW(string.ReleaseBuffer(string.GetAllocLength() + 1), CInvalidArgException*);
    EXPECT_THROW(string.Truncate(-1), CInvalidArgException*);
    EXPECT_THROW(CString("abc", -1), CInvalidArgException*);
    EXPECT_THROW(string.SetString(nullptr, 2), CInvalidArgException*);
    EXPECT_THROW(string.GetBuffer(0x7FFFFFFF), CMemoryException*);
    EXPECT_EQ("abc", string);
}

TEST(String, OwnTextMayBeTheSource)
{
    CString string("abcdef");
    string = string.GetString() + 2;
    EXPECT_EQ("cdef", string);
    for (int i = 0; i < 6; ++i)
        string += string;
    EXPECT_EQ(256, string.GetLength());
    string.Append(string.GetString() + 254);
    EXPECT_EQ("efef", string.Right(4));

    CString shared("abcdef");
    const CString sharer = shared;
    shared.SetString(shared.GetString() + 1, 3);
    EXPECT_EQ("bcd", shared);
    EXPECT_EQ("abcdef", sharer);
    shared.Insert(1, shared);
    EXPECT_EQ("bbcdcd", shared);
    shared.Format("<%s|%s>", shared.GetString(), shared.GetString());
    EXPECT_EQ("<bbcdcd|bbcdcd>", shared);
    shared.Replace("bcd", shared);
    EXPECT_EQ("<b<bbcdcd|bbcdcd>cd|b<bbcdcd|bbcdcd>cd>", shared);
    CString& same = shared;
    shared = same;
    EXPECT_EQ(39, shared.GetLength());
}

TEST(String, AppendingMovesTheBlockRarely)
{
    CString string;
    int moves = 0;
    LPCSTR place = string;
    for (int i = 0; i < 100000; ++i) {
        string += 'x';
        moves += place != string.GetString() || string.GetAllocLength() < i;
        place = string;
    }
    EXPECT_LT(moves, 60);
    string.Truncate(5);
    string.FreeExtra();
    EXPECT_LT(string.GetAllocLength(), 16);
    EXPECT_EQ("xxxxx", string);
    string.Preallocate(1000);
    EXPECT_GE(string.GetAllocLength(), 1000);
    EXPECT_EQ("xxxxx", string);
}

TEST(String, CopiesOfOneTextMayBeUsedByManyThreads)
{
    const CString text("shared by all");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([text] {
            for (int i = 0; i < 10000; ++i) {
                CString copy = text;
                copy.SetAt(0, 'S');
                const CString another = text;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ("shared by all", text);
}

TEST(String, TextsOutliveTheirThreadsAndEndInOthers)
{
    std::vector<CString> texts;
    for (int round = 0; round < 3; ++round) {
        std::thread([&texts, round] {
            const std::vector<CString> others = std::exchange(texts, {});
            for (int i = 0; i < 400; ++i)
                texts.emplace_back('a', 1 + i * 2 + round);
            for (std::size_t i = 0; i < others.size(); ++i)
                ASSERT_EQ(static_cast<int>(i) * 2 + round, others[i].GetLength());
        }).join();
    }
    EXPECT_EQ(CString('a', 801), texts.back());
}

TEST(String, ExchangedLockedTextKeepsItsBuffer)
{
    CString locked("locked text"), other("other");
    const char* const buffer = locked.LockBuffer();
    EXPECT_TRUE(locked.IsLocked());
    swap(locked, other);
    EXPECT_EQ("other", locked);
    EXPECT_EQ(buffer, locked.GetString());
    EXPECT_EQ("locked text", other);
    EXPECT_FALSE(other.IsLocked());
    locked.UnlockBuffer();
}

TEST(String, ZerosInsideBelongToTheText)
{
    const CString string("a\0b", 3);
    CString copy = string + CString("\0c", 2);
    EXPECT_EQ(5, copy.GetLength());
    EXPECT_EQ('c', copy.Right(3)[2]);
    EXPECT_EQ(string, CString("a")) << "comparison sees the text up to its first zero";
    EXPECT_EQ(-1, string.Find('b'));
}

TEST(String, RandomUseEqualsTheStandardString)
{
    Random random;
    const auto text = [&](int longest) {
        std::string made;
        for (int left = random.Between(0, longest); left > 0; --left)
            made += static_cast<char>(random.Between('a', 'd'));
        return made;
    };
    std::vector<CString> ours(4);
    std::vector<std::string> model(4);
    for (int step = 0; step < 20000; ++step) {
        const auto at = static_cast<std::size_t>(random.Between(0, 3));
        const auto from = static_cast<std::size_t>(random.Between(0, 3));
        CString& string = ours[at];
        std::string& expected = model[at];
        const int size = static_cast<int>(expected.size());
        const std::string piece = text(6);
        const int index = random.Between(0, size), count = random.Between(0, size - index);
        switch (random.Between(0, 14)) {
        case 0:
            string = ours[from];
            expected = std::string(model[from]);
            break;
        case 1:
            string += ours[from];
            expected += std::string(model[from]);
            break;
        case 2:
            string += piece.c_str();
            expected += piece;
            break;
        case 3:
            string.Insert(index, piece.c_str());
            expected.insert(static_cast<std::size_t>(index), piece);
            break;
        case 4:
            string.Delete(index, count);
            expected.erase(static_cast<std::size_t>(index), static_cast<std::size_t>(count));
            break;
        case 5:
            string = string.Mid(index, count);
            expected = expected.substr(static_cast<std::size_t>(index), static_cast<std::size_t>(count));
            break;
        case 6:
            string.Remove('a');
            std::erase(expected, 'a');
            break;
        case 7:
            string.TrimLeft('b');
            expected.erase(0, std::min(expected.find_first_not_of('b'), expected.size()));
            break;
        case 8:
            string.TrimRight("cd");
            expected.erase(expected.find_last_not_of("cd") + 1);
            break;
        case 9:
            if (size > 1500) {
                string.Empty();
                expected.clear();
            }
            break;
        case 10:
            string.Preallocate(random.Between(0, 700));
            break;
        case 11:
            string.FreeExtra();
            break;
        case 12:
            string.Insert(index, "  ");
            string.Trim();
            expected.insert(static_cast<std::size_t>(index), "  ");
            expected.erase(expected.find_last_not_of(' ') + 1);
            expected.erase(0, std::min(expected.find_first_not_of(' '), expected.size()));
            break;
        case 13:
            swap(string, ours[from]);
            std::swap(expected, model[from]);
            break;
        case 14:
            string.Truncate(index);
            expected.resize(static_cast<std::size_t>(index));
            break;
        }
        ASSERT_EQ(expected, string.GetString()) << "step " << step;
        ASSERT_EQ(static_cast<int>(expected.size()), string.GetLength());
        const auto place = expected.find(piece, static_cast<std::size_t>(std::min(index, static_cast<int>(expected.size()))));
        if (index <= string.GetLength()) {
            ASSERT_EQ(place == std::string::npos ? -1 : static_cast<int>(place), string.Find(piece.c_str(), index));
        }
        ASSERT_EQ(model[at] < model[from], ours[at] < ours[from]);
    }
}
