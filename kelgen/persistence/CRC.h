// CRC.h: 32-bit checksums over a polynomial of the caller's choice.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/platform/Win32.h>

class CMemoryStorage;

/// A polynomial and a running register, for a checksum computed most significant bit first.
class KELGEN_API CCRC
{
public:
    /// Keeps @p polynomial (without its x^32 bit, not reversed); the register is 0.
    CCRC(DWORD polynomial);
    virtual ~CCRC();

    CCRC(const CCRC&) = default;
    CCRC& operator=(const CCRC&) = default;

    /// The register, which becomes 0: the object is ready for the next message.
    DWORD Done();

protected:
    DWORD m_polynomial;
    DWORD m_register = 0;
};

/// A running checksum: the register starts at 0 and nothing is reflected or inverted.
///
///     CCRCFast crc(0x04C11DB7);
///     crc.PutBytes(data, size);
///     DWORD sum = crc.Done();  // 0x89A1897F for the nine bytes "123456789"
///
/// By contract: all objects share one table, so constructing with another polynomial changes the results of those still in use.
/// Threads: the shared table is unguarded.
/// Source: the table of the plain, non-reflected byte-wise cyclic redundancy check.
class KELGEN_API CCRCFast : public CCRC
{
public:
    /// What one byte does to a register, for the polynomial that it was last built for; at program start 0 with entries all 0.
    class KELGEN_API Table
    {
    public:
        /// Builds the entries for @p polynomial. Cost: 6000 steps when it differs from the present one, none when equal.
        void Build(DWORD polynomial);

        DWORD m_entries[256];  ///< What each value of the register's top byte does.
        DWORD m_polynomial;    ///< What they were built for.
    };

    /// Makes @p polynomial (without its x^32 bit) the shared table's.
    CCRCFast(DWORD polynomial);

    /// Feeds one byte, 0 to 255; higher bits do not count.
    void PutByte(unsigned b) { m_register = (m_register << 8) ^ m_table.m_entries[((m_register >> 24) ^ b) & 0xFF]; }

    /// Feeds @p n bytes in order; n <= 0 feeds nothing. Cost: one table step a byte; 128 bytes at a time on long runs.
    void PutBytes(unsigned char* data, int n);

    /// Feeds the storage's bytes, locked meanwhile.
    void PutBytes(CMemoryStorage* s);

    /// The one table of all objects. Threads: not locked; a new polynomial disturbs the others.
    static Table m_table;
};
