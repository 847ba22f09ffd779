// OleTest.cpp: variants that own their values, and dates around day 0.
#include <kelgen/framework/ole/OleVariant.h>

TEST(OleVariant, OwnsItsCopies)
{
    COleVariant text("caf\xE9"), copy(text);
    EXPECT_NE(text.bstrVal, copy.bstrVal);
    EXPECT_TRUE(text == copy);
    EXPECT_EQ(0xE9, copy.bstrVal[3]);
    text = COleVariant(LONG{7});
    EXPECT_EQ(4u, SysStringLen(copy.bstrVal));
    EXPECT_FALSE(text == copy);

    VARIANT detached = copy.Detach();
    EXPECT_EQ(VT_EMPTY, copy.vt);
    text.Attach(detached);
    EXPECT_EQ(VT_EMPTY, detached.vt);
    EXPECT_EQ(VT_BSTR, text.vt);
}

TEST(OleVariant, ChangesTypeOrThrowsAndKeepsItsValue)
{
    COleVariant number("12.5");
    number.ChangeType(VT_R8);
    EXPECT_EQ(12.5, number.dblVal);
    number.ChangeType(VT_BSTR);
    EXPECT_TRUE(number == COleVariant("12.5"));

    COleVariant text("abc");
    try {
        text.ChangeType(VT_I4);
        ADD_FAILURE() << "changed";
    } catch (COleException* exception) {
        EXPECT_EQ(DISP_E_TYPEMISMATCH, exception->m_sc);
        exception->Delete();
    }
    EXPECT_TRUE(text == COleVariant("abc"));
    EXPECT_EQ(VARIANT_TRUE, COleVariant(LONG{5}, VT_BOOL).boolVal);
}

TEST(OleDateTime, CountsEvenlyOverDayZero)
{
    const COleDateTime before(1899, 12, 29, 6, 0, 0);
    EXPECT_DOUBLE_EQ(-1.25, before.m_dt);
    const COleDateTime after = before + COleDateTimeSpan(1.0);
    EXPECT_DOUBLE_EQ(0.25, after.m_dt);
    EXPECT_DOUBLE_EQ(1.0, (after - before).m_span);
    EXPECT_DOUBLE_EQ(before.m_dt, (after - COleDateTimeSpan(1.0)).m_dt);
    EXPECT_LT(COleDateTime(-1.25), COleDateTime(-1.75));
    EXPECT_EQ("1899-12-29 06:00:00", std::string(before.Format("%Y-%m-%d %H:%M:%S")));
}

TEST(OleDateTime, NoDateIsInvalid)
{
    const COleDateTime fresh;
    EXPECT_EQ(COleDateTime::valid, fresh.GetStatus());
    EXPECT_EQ(0.0, fresh.m_dt);
    for (const auto& [month, day, hour] : {std::array{2, 30, 0}, std::array{13, 1, 0}, std::array{1, 1, 24}, std::array{1, -1, 0}}) {
        const COleDateTime none(2021, month, day, hour, 0, 0);
        EXPECT_EQ(COleDateTime::invalid, none.GetStatus()) << month << ' ' << day << ' ' << hour;
        EXPECT_EQ(-1, none.GetYear());
    }
    const COleDateTime leap(2020, 2, 29, 23, 59, 59);
    EXPECT_EQ(29, leap.GetDay());
    EXPECT_EQ(7, leap.GetDayOfWeek());
    EXPECT_EQ(59, leap.GetSecond());
    EXPECT_EQ(COleDateTime::invalid, (COleDateTime(9999, 12, 31, 0, 0, 0) + COleDateTimeSpan(1.0)).GetStatus());
}
