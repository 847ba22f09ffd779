// StrTokenizer.h: CStrTokenizer, which hands out the pieces of a narrow text between occurrences of a separator text.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>

/// Walks a text and hands out what lies between separators.
///
///     CStrTokenizer tokenizer("a,,b", 4);
///     CString token;
///     while (tokenizer.GetNextToken(token, ",", 0))
///         Use(token);  // "a", "", "b"
///
/// A separator is a whole text, not a set of characters. By contract: after a token the position is one byte past the separator's
/// start, so the rest of a longer separator opens the next token ("a::b" at "::" gives "a", ":b"). A separator at the very end is
/// followed by no empty token. Nothing is quoted or escaped. An empty separator occurs at the position itself.
/// All members go by bytes, in every code page: the second byte of a character can be a separator.
class KELGEN_API CStrTokenizer
{
public:
    CStrTokenizer();
    /// Over the first @p n bytes at @p p.
    CStrTokenizer(const char* p, int n);
    /// Over all bytes of @p text.
    CStrTokenizer(const CString& text);
    CStrTokenizer(const CStrTokenizer& other);
    CStrTokenizer& operator=(const CStrTokenizer& other);
    virtual ~CStrTokenizer();

    /// Begins again with the same text.
    void Restart() { m_nPos = 0; }
    /// Begins with another text.
    void Restart(CString& text);
    /// The position becomes @p n, whatever it is. Before the text it finds no separator, and the whole text is the next token.
    void SetCurrentPos(int n) { m_nPos = n; }

    /// 1, and the piece up to the next @p separator at or after the position, or the rest of the text; @p bWithSeparator nonzero
    /// adds one more byte, the separator's first only. 0 at the end, with @p token unchanged.
    int GetNextToken(CString& token, const char* separator, int bWithSeparator);

    /// The token that GetNextToken would give, without moving: returns where the token after it would start, the text's length
    /// when the rest of the text was taken, -1 at the end, with @p token unchanged.
    int GetNextTokenPos(CString& token, const char* separator, int bWithSeparator) const;

    /// Takes the part of @p path before its last '/' or '\\' as the text, from its start. False when there is none: the text is
    /// then empty.
    bool ExtractFolderPath(const char* path);

protected:
    CString m_strText;
    int m_nPos = 0;
};
