// array_of_opted_in.cpp: elements that survive being moved bit by bit.
// compiles
#include <kelgen/containers/BaseArray.h>
#include <kelgen/text/WStrArray.h>

struct Row
{
    CString name;
    int size = 0;
};
template <>
constexpr bool kelgen::is_movable_bitwise<Row> = true;

void Check(CArray<Row>& rows, CBaseArray<CWStr, const CWStr&>& texts, CArray<CWStrArray>& lists)
{
    rows.SetSize(2);
    texts.Add(CWStr());
    lists.SetSize(1);
}
