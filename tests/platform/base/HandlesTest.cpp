// HandlesTest.cpp: last errors and closed handles, as every target's platform has them.
TEST(LastError, BelongsToTheThread)
{
    SetLastError(ERROR_CRC);
    EXPECT_EQ(DWORD{ERROR_CRC}, GetLastError());
    SetLastError(0);
    EXPECT_EQ(0u, GetLastError());
}
