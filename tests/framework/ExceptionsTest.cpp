// ExceptionsTest.cpp: throwing by pointer, ends of handlers, causes and texts.
#include <kelgen/framework/base/Exceptions.h>

#include "support/Rows.h"

#include <cerrno>
#include <stdexcept>

using namespace kelgen::test;

namespace {

int living = 0;

class CCounted : public CException
{
public:
    CCounted() { ++living; }
    ~CCounted() override { --living; }
};

}  // namespace

TEST(Exceptions, DeleteEndsOnlyThoseMadeForIt)
{
    CException* counted = new CCounted;
    counted->Delete();
    EXPECT_EQ(0, living);

    CException* ready = nullptr;
    for (int i = 0; i < 2; ++i) {
        try {
            AfxThrowMemoryException();
        } catch (CMemoryException* e) {
            EXPECT_TRUE(!ready || ready == e);
            ready = e;
            e->Delete();
        }
    }
    EXPECT_TRUE(ready->IsKindOf(RUNTIME_CLASS(CSimpleException)));
}

TEST(Exceptions, HandlerByMacroDeletes)
{
    BOOL reached = FALSE;
    TRY
    {
        throw new CCounted;
    }
    CATCH(CMemoryException, e)
    {
        ADD_FAILURE();
    }
    AND_CATCH(CCounted, e)
    {
        reached = TRUE;
        EXPECT_EQ(1, living);
    }
    END_CATCH
    EXPECT_TRUE(reached);
    EXPECT_EQ(0, living);
}

TEST(Exceptions, ThrowLastKeepsTheExceptionForTheOuterHandler)
{
    int handled = 0;
    TRY{TRY{throw new CCounted;
}
CATCH_ALL(e)
{
    // A handler inside this one ends before the outer exception goes on.
    TRY
    {
        AfxThrowFileException(CFileException::endOfFile);
    }
    END_TRY
    ++handled;
    THROW_LAST();
}
END_CATCH_ALL
}
CATCH(CCounted, e)
{
    EXPECT_EQ(1, living);
    ++handled;
}
END_CATCH
EXPECT_EQ(2, handled);
EXPECT_EQ(0, living);
}

TEST(Exceptions, FileExceptionCarriesCauseErrorAndName)
{
    try {
        CFileException::ThrowOsError(ERROR_SHARING_VIOLATION, "C:\\a.txt");
        FAIL();
    } catch (CFileException* e) {
        EXPECT_EQ(CFileException::sharingViolation, e->m_cause);
        EXPECT_EQ(ERROR_SHARING_VIOLATION, e->m_lOsError);
        EXPECT_EQ("C:\\a.txt", e->m_strFileName);
        e->Delete();
    }
    EXPECT_NO_THROW(CFileException::ThrowOsError(0));
    EXPECT_NO_THROW(CFileException::ThrowErrno(0));
}

TEST(Exceptions, CausesOfErrors)
{
    const std::pair<LONG, int> rows[] = {
        {0, CFileException::none},
        {2, CFileException::fileNotFound},
        {3, CFileException::badPath},
        {4, CFileException::tooManyOpenFiles},
        {5, CFileException::accessDenied},
        {6, CFileException::invalidFile},
        {16, CFileException::removeCurrentDir},
        {25, CFileException::badSeek},
        {30, CFileException::hardIO},
        {32, CFileException::sharingViolation},
        {33, CFileException::lockViolation},
        {38, CFileException::endOfFile},
        {112, CFileException::diskFull},
        {123, CFileException::badPath},
        {9999, CFileException::genericException},
    };
    for (const auto& [error, cause] : rows)
        EXPECT_EQ(cause, CFileException::OsErrorToException(error)) << error;
    EXPECT_EQ(CFileException::fileNotFound, CFileException::ErrnoToException(ENOENT));
    EXPECT_EQ(CFileException::accessDenied, CFileException::ErrnoToException(EACCES));
    EXPECT_EQ(CFileException::diskFull, CFileException::ErrnoToException(ENOSPC));
    EXPECT_EQ(CFileException::genericException, CFileException::ErrnoToException(ERANGE));
}

TEST(Exceptions, TextNamesFileAndValueAndIsCutToTheBuffer)
{
    const CFileException exception(CFileException::fileNotFound, 2, "list.txt");
    char text[100];
    UINT help = 7;
    EXPECT_TRUE(exception.GetErrorMessage(text, sizeof text, &help));
    EXPECT_STREQ("list.txt was not found (error 2).", text);
    EXPECT_EQ(0u, help);
    EXPECT_TRUE(exception.GetErrorMessage(text, 9));
    EXPECT_STREQ("list.txt", text);
    EXPECT_FALSE(exception.GetErrorMessage(text, 0));

    for (const auto& [thrown, wanted] : Table<std::shared_ptr<CException>, const char*>{
             {std::make_shared<CFileException>(CFileException::endOfFile, -1, "a"), "The end of a was passed."},
             {std::make_shared<CFileException>(77), "An unknown error occurred while accessing an unnamed file (cause 77)."},
             {std::make_shared<CArchiveException>(CArchiveException::badIndex, "a.dat"), "a.dat has an unexpected format."},
             {std::make_shared<CArchiveException>(-1, "a.dat"), "An unknown error occurred while accessing a.dat (cause -1)."},
         }) {
        EXPECT_TRUE(thrown->GetErrorMessage(text, sizeof text));
        EXPECT_STREQ(wanted, text);
    }
    EXPECT_FALSE(CCounted().GetErrorMessage(text, sizeof text));
    EXPECT_STREQ("", text);

    EXPECT_TRUE(CNotSupportedException(FALSE, 100).GetErrorMessage(text, sizeof text));
    EXPECT_STREQ("program", text) << "a string resource";
    EXPECT_FALSE(CNotSupportedException(FALSE, 4711).GetErrorMessage(text, sizeof text));
}

TEST(Exceptions, BadIndexIsNamedUntilTheNextArgument)
{
    for (const auto& [throwIt, wanted] : Table<void (*)(), const char*>{
             {[] { kelgen::detail::ThrowBadIndex(-7, 3); }, "An argument is not valid: index -7 of size 3."},
             {[] { AfxThrowInvalidArgException(); }, "An argument is not valid."},
         }) {
        try {
            throwIt();
            ADD_FAILURE();
        } catch (CInvalidArgException* e) {
            char text[100];
            EXPECT_TRUE(e->GetErrorMessage(text, sizeof text));
            EXPECT_STREQ(wanted, text);
        }
    }
}

TEST(Exceptions, HandlersDescribeWhatTheyCaughtInOneLine)
{
    for (const auto& [throwIt, wanted] : Table<void (*)(), const char*>{
             {[] { AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL, "a"); },
              "CFileException: The disk is full while accessing a (error 112)."},
             {[] { throw new CCounted; }, "(anonymous namespace)::CCounted"},
             {[] { throw static_cast<CUserException*>(nullptr); }, "CUserException*"},
             {[] { throw std::out_of_range("first\nsecond"); }, "std::out_of_range: first"},
             {[] { throw "plain"; }, "text: plain"},
             {[] { throw std::pair<int, char>(); }, "std::pair<int, char>"},
         }) {
        char text[100];
        try {
            throwIt();
            ADD_FAILURE();
        } catch (CException* e) {
            kelgen::detail::DescribeCaught(text, sizeof text);
            if (e)
                e->Delete();
        } catch (...) {
            kelgen::detail::DescribeCaught(text, sizeof text);
        }
        EXPECT_STREQ(wanted, text);
    }
    EXPECT_EQ(0, living);
}
