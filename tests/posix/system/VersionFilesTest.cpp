// VersionFilesTest.cpp: cut and damaged program files of both forms.
#include <kelgen/system/VersionInfo.h>

#include "support/Rows.h"
#include "support/Scratch.h"
#include "support/VersionImages.h"

using namespace kelgen::test;

namespace {

struct FileForm
{
    const char* name;
    bool is64Bit;
};

/// Files of both forms, with every byte of one resource in its place.
class VersionFiles : public testing::TestWithParam<FileForm>
{
protected:
    void SetUp() override
    {
        const std::string resource =
            VersionResource(FixedInfo(1, 2, 3, 4), {{u"040904e4", {TextNode(u"ProductName", u"text")}}}, Number(0x04E40409, 4));
        m_sound = Image{GetParam().is64Bit, {{16, 1, 0x409, resource}}}.Bytes();
        m_resourceStart = m_sound.find(resource);
        m_resourceEnd = m_resourceStart + resource.size();
        ASSERT_EQ(1, Load(m_sound));
    }

    /// Loads @p bytes as a file; whatever they say, what is then told lies in them.
    int Load(const std::string& bytes) const
    {
        WriteBytes(m_path, bytes);
        CVersionInfo version;
        const int loaded = version.Load(m_path.c_str());
        EXPECT_EQ(loaded != 0, version.GetFixedFileInfo() != nullptr);
        EXPECT_LE(version.GetNumberOfTranslations(), static_cast<int>(bytes.size() / 4));
        EXPECT_LE(version.GetProductName().GetLength(), static_cast<int>(bytes.size()));
        return loaded;
    }

    std::string m_sound;
    std::size_t m_resourceStart = 0;
    std::size_t m_resourceEnd = 0;
    const std::string m_path = ScratchFile("image.dll");
};

}  // namespace

TEST_P(VersionFiles, LoadFromTheLengthOfTheirFixedPartOn)
{
    for (std::size_t size = 0; size < m_resourceEnd; size += size < 0x80 || size % 0x80 > 0x60 ? 4 : 16)
        ASSERT_EQ(size >= m_resourceStart + 4 ? 1 : 0, Load(m_sound.substr(0, size))) << size;
}

TEST_P(VersionFiles, HaveNoResourceThatLeadsOutOfItsSection)
{
    const std::size_t sizeAt = m_resourceStart - 12;
    const DWORD room = 0x1000 - static_cast<DWORD>(m_resourceStart - kImageSectionOffset);
    for (const auto& [size, loaded] : {std::pair(room, 1), {room + 1, 0}, {0x7FFFFFFFu, 0}, {0xFFFFFFFFu, 0}})
        EXPECT_EQ(loaded, Load(std::string(m_sound).replace(sizeAt, 4, Number(size, 4)))) << size;
}

TEST_P(VersionFiles, MayHoldAnyNumberAnywhere)
{
    constexpr std::size_t kHeaders = 0x3C;
    for (std::size_t at = kHeaders; at < m_resourceEnd; at += 4) {
        // No bytes, far away and over the end, the directory itself and, read as two lengths, one of each.
        for (const DWORD value : {0u, 0xFFFFFFFFu, 0x80000000u, 0x0000FFFFu})
            Load(std::string(m_sound).replace(at, 4, Number(value, 4)));
        if (at >= kHeaders + 0x140 && at < kImageSectionOffset - 4)
            at = kImageSectionOffset - 4;
    }
}

INSTANTIATE_TEST_SUITE_P(, VersionFiles, testing::Values(FileForm{"Bits32", false}, FileForm{"Bits64", true}), RowName);
