// CRCTest.cpp: known sums, the shared table, and the fast path against the obvious model.
#include <kelgen/persistence/CRC.h>

#include <kelgen/persistence/MemoryStorage.h>
#include <kelgen/persistence/internal/CRCFold.h>

#include "support/Random.h"

using namespace kelgen::test;

namespace {

constexpr DWORD kEthernet = 0x04C11DB7;
constexpr DWORD kCastagnoli = 0x1EDC6F41;

unsigned char* Bytes(std::string& text)
{
    return reinterpret_cast<unsigned char*>(text.data());
}

DWORD SumOf(DWORD polynomial, std::string bytes)
{
    CCRCFast crc(polynomial);
    crc.PutBytes(Bytes(bytes), static_cast<int>(bytes.size()));
    return crc.Done();
}

/// The obvious model: one bit after the other.
DWORD BitwiseCrc(DWORD polynomial, const std::string& bytes)
{
    DWORD crc = 0;
    for (const char b : bytes) {
        crc ^= static_cast<DWORD>(static_cast<unsigned char>(b)) << 24;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x80000000) ? (crc << 1) ^ polynomial : crc << 1;
    }
    return crc;
}

}  // namespace

TEST(CRC, KnownSums)
{
    EXPECT_EQ(0x89A1897Fu, SumOf(kEthernet, "123456789"));
    EXPECT_EQ(0u, SumOf(0, "123456789"));
    EXPECT_EQ(kCastagnoli, SumOf(kCastagnoli, std::string("\0\0\0\1", 4)));
}

TEST(CRC, EveryPolynomialAndLengthEqualsTheBitwiseModelHoweverManyBlocksAreFoldedAtOnce)
{
    const int most = kelgen::detail::foldedAtOnce;
    Random random;
    for (int round = 0; round < 1000; ++round) {
        const auto polynomial = static_cast<DWORD>(random());
        const int length = random.Between(0, round % 10 == 0 ? 5000 : 300);
        std::string bytes(static_cast<size_t>(length), '\0');
        for (char& b : bytes)
            b = static_cast<char>(random());
        const DWORD expected = BitwiseCrc(polynomial, bytes);

        const int cut = random.Between(0, length);
        for (const int atOnce : {1, 2, 4}) {
            if (atOnce > most)
                continue;
            kelgen::detail::foldedAtOnce = atOnce;
            CCRCFast crc(polynomial);
            crc.PutBytes(Bytes(bytes), cut);
            crc.PutBytes(Bytes(bytes) + cut, length - cut);
            kelgen::detail::foldedAtOnce = most;
            ASSERT_EQ(expected, crc.Done()) << "polynomial " << polynomial << ", length " << length << ", " << atOnce << " at once";
        }
    }
}

TEST(CRC, RebuiltTableChangesTheSumsOfOlderObjects)
{
    const std::string text(300, 'k');
    CCRCFast older(kEthernet);
    CCRCFast newer(kCastagnoli);
    for (const size_t length : {size_t{10}, text.size()}) {
        std::string bytes = text.substr(0, length);
        older.PutBytes(Bytes(bytes), static_cast<int>(length));
        EXPECT_EQ(BitwiseCrc(kCastagnoli, bytes), older.Done()) << length;
    }

    // Built again for another polynomial only.
    CCRCFast::m_table.m_entries[1] = 1;
    CCRCFast same(kCastagnoli);
    EXPECT_EQ(1u, CCRCFast::m_table.m_entries[1]);
    CCRCFast other(kEthernet);
    EXPECT_EQ(kEthernet, CCRCFast::m_table.m_entries[1]);
    EXPECT_EQ(0x690CE0EEu, CCRCFast::m_table.m_entries[128]);
}

TEST(CRC, DoneStartsOverAndCopiesGoOn)
{
    std::string bytes = "123456789";
    CMemoryStorage rest(nullptr, bytes.data() + 4, 5);
    CMemoryStorage empty(nullptr);
    CCRCFast crc(kEthernet);
    crc.PutBytes(Bytes(bytes), 4);
    CCRCFast copy = crc;
    crc.PutBytes(Bytes(bytes), 0);
    crc.PutBytes(Bytes(bytes), -1);
    crc.PutBytes(&empty);
    crc.PutBytes(&rest);
    EXPECT_EQ(0x89A1897Fu, crc.Done());
    EXPECT_EQ(0u, crc.Done());
    for (size_t i = 4; i < bytes.size(); ++i)
        copy.PutByte(Bytes(bytes)[i]);
    EXPECT_EQ(0x89A1897Fu, copy.Done());
}
