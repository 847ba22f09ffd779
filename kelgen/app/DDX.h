// DDX.h: data exchange routines for dialogs.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/collections/StringArray.h>
#include <kelgen/framework/dialogs/DataExchange.h>
#include <kelgen/text/StrArray.h>

/// Routines for DoDataExchange. Each moves data to the control, or from it while saving; what does not pass ends the exchange by
/// CDataExchange::Fail.
class KELGEN_API CDDX
{
public:
    virtual ~CDDX();

    /// A number and an edit control. Nothing is checked: text is trimmed and read by atoi, so that rubbish is 0; a number
    /// beyond an int is the nearest int.
    static void DDXEdit(CDataExchange* pDX, UINT nIDC, int* pValue);
    /// While saving, lets only digits pass, blanks around them aside, whose number lies between @p nMin and @p nMax, inclusive.
    /// By contract: an empty text counts as 0 and a minus sign is no digit, so a range that lies below 0 lets nothing pass.
    static void DDVEditIntegerRange(CDataExchange* pDX, UINT nIDC, LONG nMin, LONG nMax);
    /// One button that stands for @p nValue: checked exactly if *@p pValue is that. While saving, *@p pValue stays when it is not.
    static void DDXRadio(CDataExchange* pDX, UINT nIDC, LONG nValue, LONG* pValue);
    /// All texts of a list box.
    static void DDXListBox(CDataExchange* pDX, UINT nIDC, CStringArray* pItems);
    /// All texts of a combo box but the first, which is string resource @p nIDFirst. Loading selects the second item, or the only one.
    /// While saving, the text that is typed in joins the items when none is selected; each text is taken once.
    static void DDXComboBoxV001(CDataExchange* pDX, UINT nIDC, CStrArray* pItems, UINT nIDFirst);
};
