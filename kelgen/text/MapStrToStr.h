// MapStrToStr.h: CMapStrToStr, named values that fill in the blanks of a text.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/collections/MapTypes.h>

/// A map from variable names to values. A text names a variable as "$name" inside braces; the whole group in braces goes when its
/// variable is empty.
///
///     CMapStrToStr variables;
///     variables.SetAt("path", "C:\\x");
///     CString text = "open{ $path}";
///     variables.ReplaceVars(text);  // "open C:\x"; with an empty path "open"
///
/// Names are compared with case, and everything is searched byte by byte, in every code page. The variables are taken in the map's order of
/// iteration.
class KELGEN_API CMapStrToStr : public CMapStringToString
{
public:
    CMapStrToStr();
    ~CMapStrToStr() override;

    /// Replaces every occurrence of every bare name, inside words too, by its value.
    /// By contract: values that were put in are searched for the names that follow, so that a value may name other variables.
    void FormatString(CString& text) const;

    /// Resolves the groups. A group reaches from a "{" to the next "}"; it names a variable when the character behind the first
    /// "$name" after the brace is no IsVarChar. Inside the group every "$name" is then replaced by the value, or the group is
    /// emptied when the value is; its braces go. Groups that name no variable stay as they are.
    /// By contract: the first variable that a group names resolves it, and others in it stay as text. The search for the same
    /// variable goes on one character behind a resolved group, so that it passes over a group which follows at once. A "$name"
    /// followed by an IsVarChar hides later ones of the same group.
    /// Every "{" must have a "}" behind it.
    void ReplaceVars(CString& text) const;

    /// Whether @p c is one of A to Z, a to z and '_', or a digit unless @p bNoDigits.
    static bool IsVarChar(char c, bool bNoDigits);
};
