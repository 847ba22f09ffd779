// WArchive.h: 16-bit strings and lines in the framework's archive.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/files/Archive.h>
#include <kelgen/text/WStr.h>

/// An archive that also reads lines of 16-bit text, low byte first.
///
///     CFile file("C:\\list.txt", CFile::modeRead);
///     CWArchive archive(&file, CArchive::load);
///     CWStr line;
///     while (archive.ReadString(line))
///         Use(line);
///
/// A line feed ends a line; so does a carriage return, together with the unit behind it, whatever that is. A single byte at the end is
/// no unit.
/// Throws: as CArchive.
class KELGEN_API CWArchive : public CArchive
{
public:
    /// As CArchive: of an open file, for loading or storing.
    CWArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = nullptr);
    virtual ~CWArchive();

    /// Reads one line into @p buffer, which has room for |nMax| + 1 units, and terminates it; a longer line goes on with the next call.
    /// Null when nothing was stored before the end. By contract: @p nMax as a negative number makes the last unit of the line's end part
    /// of the text, so that a caller can tell a whole line from a piece.
    unsigned short* ReadString(unsigned short* buffer, UINT nMax);

    /// Reads one whole line, without its line feed. By contract: reads by pieces of 128 units, of which each ends at its first 0 unit,
    /// and the result is whether the last piece had anything: FALSE for a last line of 128, 256, ... units without an end, which is
    /// read all the same; the next line follows on one that ends in a carriage return alone when its last piece is full.
    /// The capacity becomes 128 units for each piece, as its class rounds it.
    BOOL ReadString(CWStr& line);
};
