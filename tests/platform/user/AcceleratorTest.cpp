// AcceleratorTest.cpp: accelerator tables.
#include <kelgen/platform/Win32.h>

#include <array>

TEST(Accelerators, TablesAreCopiesOfTheirEntriesAndOfResources)
{
    const HINSTANCE module = GetModuleHandleA(nullptr);
    const HACCEL loaded = LoadAcceleratorsA(module, MAKEINTRESOURCEA(3));
    ASSERT_NE(nullptr, loaded);
    EXPECT_EQ(9, CopyAcceleratorTableA(loaded, nullptr, 0));
    std::array<ACCEL, 20> entries = {};
    EXPECT_EQ(2, CopyAcceleratorTableA(loaded, entries.data(), 2));
    EXPECT_EQ(0, entries[2].cmd);
    EXPECT_EQ(9, CopyAcceleratorTableA(loaded, entries.data(), 20));
    EXPECT_EQ(FALT, entries[1].fVirt);
    EXPECT_EQ('a', entries[1].key);
    EXPECT_EQ(103, entries[1].cmd);
    EXPECT_EQ(FVIRTKEY | FNOINVERT | FSHIFT | FCONTROL, entries[4].fVirt);
    EXPECT_EQ(FVIRTKEY, entries[8].fVirt) << "without the mark of the last entry";
    EXPECT_NE(loaded, LoadAcceleratorsA(module, MAKEINTRESOURCEA(3))) << "each load is a table of its own";

    const HACCEL made = CreateAcceleratorTableA(entries.data(), 9);
    EXPECT_TRUE(DestroyAcceleratorTable(loaded));
    EXPECT_FALSE(DestroyAcceleratorTable(loaded));
    EXPECT_EQ(0, CopyAcceleratorTableA(loaded, nullptr, 0));
    EXPECT_EQ(9, CopyAcceleratorTableA(made, nullptr, 0));
    EXPECT_TRUE(DestroyAcceleratorTable(made));

    SetLastError(0);
    EXPECT_EQ(nullptr, CreateAcceleratorTableA(entries.data(), 0));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
    EXPECT_EQ(nullptr, LoadAcceleratorsA(module, "missing"));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_NAME_NOT_FOUND}, GetLastError());
}
