// Pack.cpp: texts through an archive and back, a checksum over its bytes, and a formatted line.
#include "Pack.h"

#include "Account.h"

#include <kelgen/framework/files/MemFile.h>
#include <kelgen/persistence/CRC.h>
#include <kelgen/text/International.h>
#include <kelgen/text/WArchive.h>

namespace {

constexpr DWORD kPolynomial = 0x04C11DB7;

CWStr Wide(const CString& text)
{
    CWStr wide;
    wide.Copy(text, text.GetLength());
    return wide;
}

void Write(CFile& file, gen::CPropertySet& settings)
{
    CArchive archive(&file, CArchive::store);
    for (int i = 0; i < settings.GetPropertyCount(); ++i) {
        const gen::CProperty& property = settings.PropertyAt(i);
        archive << Wide(property.GetName()) << Wide(property.GetValue().GetValueString());
    }
}

bool Holds(CFile& file, gen::CPropertySet& settings)
{
    CArchive archive(&file, CArchive::load);
    bool same = true;
    for (int i = 0; i < settings.GetPropertyCount(); ++i) {
        const gen::CProperty& property = settings.PropertyAt(i);
        CWStr name;
        CWStr value;
        archive >> name >> value;
        same &= name == Wide(property.GetName()) && value == Wide(property.GetValue().GetValueString());
    }
    return same;
}

DWORD SumOf(CFile& file)
{
    CCRCFast crc(kPolynomial);
    unsigned char bytes[512];
    file.SeekToBegin();
    while (const UINT count = file.Read(bytes, sizeof bytes))
        crc.PutBytes(bytes, static_cast<int>(count));
    file.SeekToBegin();
    return crc.Done();
}

}  // namespace

void PackAndReport(gen::CPropertySet& settings)
{
    account::Step("Pack the set into an archive and read it back");
    CMemFile packed;
    Write(packed, settings);

    CWStr report;
    report.Format(u"%d settings in %d bytes, checksum %08x"_w, settings.GetPropertyCount(), static_cast<int>(packed.GetLength()),
                  SumOf(packed));
    CString line;
    CInternational::UnicodeToAnsi(line, report);
    account::Line(line);
    account::Line(Holds(packed, settings) ? "The archive holds every value of the set" : "The archive holds other values than the set");
}
