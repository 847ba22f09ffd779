// ProcedureTable.cpp: one entry for each procedure and kind of text, found by its cookie without a lock.
#include <kelgen/platform/posix/user/objects/ProcedureTable.h>

#include <array>
#include <map>

namespace kelgen::posix::user {

namespace {

constexpr ULONG_PTR kCookieBase = 0xFFFF0000;
constexpr DWORD kMaxProcedures = 0x4000;

struct Table
{
    std::map<std::pair<WNDPROC, bool>, DWORD> indices;  // under the desktop lock
    std::array<std::atomic<const Procedure*>, kMaxProcedures> entries{};
    DWORD count = 0;
};

Table& Procedures()
{
    static Table& table = *new Table;
    return table;
}

}  // namespace

const Procedure* CookieProcedure(WNDPROC value)
{
    const auto bits = reinterpret_cast<ULONG_PTR>(value);
    if (bits < kCookieBase || bits - kCookieBase >= kMaxProcedures)
        return nullptr;
    return Procedures().entries[bits - kCookieBase].load(std::memory_order_acquire);
}

const Procedure* ProcedureOf(WNDPROC procedure, bool wide)
{
    if (const Procedure* entry = CookieProcedure(procedure))
        return entry;
    DesktopGuard guard;
    Table& table = Procedures();
    const auto [place, isNew] = table.indices.try_emplace({procedure, wide}, table.count);
    if (isNew) {
        const auto* entry = new Procedure{procedure, wide, place->second};
        if (table.count == kMaxProcedures) {
            // The table is full: the procedure works but has no cookie.
            table.indices.erase(place);
            return entry;
        }
        table.entries[table.count++].store(entry, std::memory_order_release);
    }
    return table.entries[place->second].load(std::memory_order_relaxed);
}

WNDPROC ProcedureFor(const Procedure& procedure, bool wideCaller)
{
    if (procedure.wide == wideCaller || procedure.index >= kMaxProcedures)
        return procedure.call;
    return reinterpret_cast<WNDPROC>(kCookieBase + procedure.index);
}

}  // namespace kelgen::posix::user
