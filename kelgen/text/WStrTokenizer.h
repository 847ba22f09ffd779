// WStrTokenizer.h: CWStrTokenizer, which hands out the pieces of a 16-bit text between occurrences of a separator text.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/text/WStr.h>

/// Walks a text and hands out what lies between separators.
///
///     CWStrTokenizer tokenizer(u"a,,b"_w, 4);
///     CWStr token;
///     while (tokenizer.GetNextToken(token, u","_w, false))
///         Use(token);  // "a", "", "b"
///
/// A separator is a whole text, not a set of units. By contract: after a token the position is one unit past the separator's
/// start, so the rest of a longer separator opens the next token ("a::b" at "::" gives "a", ":b"). A separator at the very end is
/// followed by no empty token. Nothing is quoted or escaped. An empty separator occurs at the position itself.
/// Cost: a token is one search and one copy of its units.
class KELGEN_API CWStrTokenizer
{
public:
    CWStrTokenizer();
    /// Over the @p n units at @p p, zeros included.
    CWStrTokenizer(const unsigned short* p, int n);
    /// Shares the block of @p text.
    CWStrTokenizer(const CWStr& text);
    CWStrTokenizer(const CWStrTokenizer& other);
    CWStrTokenizer& operator=(const CWStrTokenizer& other);
    virtual ~CWStrTokenizer();

    /// Begins again with the same text.
    void Restart() { m_nPos = 0; }
    /// Takes @p text, from its start.
    void Restart(CWStr& text);

    /// 1, and the piece up to the next @p separator at or after the position, or the rest of the text; @p bWithSeparator adds one
    /// more unit, the separator's first only. 0 at the end, with @p token unchanged.
    int GetNextToken(CWStr& token, const unsigned short* separator, bool bWithSeparator);

protected:
    CWStr m_strText;
    int m_nPos = 0;
};
