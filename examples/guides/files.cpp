// files.cpp: text files, searches, and an archive that later versions of the program still read.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <iostream>

namespace {

/// A document of the program's. Its schema is 2: version 1 had no currency.
class Account : public CObject
{
    DECLARE_SERIAL(Account)

public:
    CString owner;
    int balance = 0;
    CString currency = "EUR";

    /// Writes schema 2 and reads both. It asks for the schema once, before anything else.
    void Serialize(CArchive& archive) override
    {
        if (archive.IsStoring()) {
            archive << owner << balance << currency;
            return;
        }
        const UINT schema = archive.GetObjectSchema();
        archive >> owner >> balance;
        if (schema >= 2)
            archive >> currency;
    }
};

IMPLEMENT_SERIAL(Account, CObject, VERSIONABLE_SCHEMA | 2)

/// A file as version 1 of the program wrote it: the class with its schema and name, then owner and balance.
void WriteVersion1(const char* path)
{
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    CArchive archive(&file, CArchive::store);
    archive << WORD{0xFFFF} << WORD{1} << WORD{7};
    archive.Write("Account", 7);
    archive << CString("Weber") << 30;
    archive.Close();
}

void ShowAccount(const char* path)
{
    CFile file(path, CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    Account* account = nullptr;
    archive >> account;
    std::cout << account->owner << ": " << account->balance << ' ' << account->currency << '\n';
    delete account;
}

}  // namespace

int main()
{
    try {
        // Lines of text.
        {
            CStdioFile notes("notes.txt", CFile::modeCreate | CFile::modeWrite);
            notes.WriteString("first line\nsecond line\n");
        }
        CStdioFile notes("notes.txt", CFile::modeRead);
        CString line;
        while (notes.ReadString(line))
            std::cout << line.GetLength() << " letters: " << line << '\n';
        notes.Close();

        // Objects go into an archive and come out as what they were. Close tells of errors, destructors do not.
        Account account;
        account.owner = "Okafor";
        account.balance = 4711;
        {
            CFile file("account.bin", CFile::modeCreate | CFile::modeWrite);
            CArchive archive(&file, CArchive::store);
            archive << &account;
            archive.Close();
            file.Close();
        }
        ShowAccount("account.bin");
        WriteVersion1("old.bin");
        ShowAccount("old.bin");

        // A search. FindNextFile says whether there is another one, and makes the one before it current.
        CFileFind find;
        for (BOOL more = find.FindFile("acc*.bin"); more;) {
            more = find.FindNextFile();
            std::cout << find.GetFileTitle() << " has " << find.GetLength() << " bytes\n";
        }
        CFile missing("no such file", CFile::modeRead);
    } catch (CFileException* exception) {
        std::cout << "not opened, cause " << exception->m_cause << '\n';
        exception->Delete();
    }
}
