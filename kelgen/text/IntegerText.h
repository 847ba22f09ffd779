// IntegerText.h: tables that map integers to texts and back.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseArray.h>
#include <kelgen/framework/base/String.h>

/// One pair of an integer and its text.
class KELGEN_API CBaseIntegerTextItem
{
public:
    using MovableBitwise = CBaseIntegerTextItem;

    /// The difference a - b, by 32-bit subtraction. By contract: it wraps for values 2^31 or more apart, so a host keeps them closer.
    static int IndexCompare(const CBaseIntegerTextItem& a, const CBaseIntegerTextItem& b);
    /// The order of the texts by the values of their bytes.
    static int StringCompare(const CBaseIntegerTextItem& a, const CBaseIntegerTextItem& b);

    /// The integer.
    int m_nInteger = 0;
    /// The text that belongs to it.
    CString m_strItemText;
};

/// Rows of such a table, in order.
class KELGEN_API CBaseIntegerTextItemArray : public CBaseArray<CBaseIntegerTextItem, CBaseIntegerTextItem&>
{
public:
    CBaseIntegerTextItemArray() = default;
    CBaseIntegerTextItemArray(const CBaseIntegerTextItemArray&) = default;
    CBaseIntegerTextItemArray& operator=(const CBaseIntegerTextItemArray&) = default;
    ~CBaseIntegerTextItemArray() override;
};

/// An indexed list of texts, kept wherever the derived class likes.
class KELGEN_API CBaseTextArray
{
public:
    virtual ~CBaseTextArray();

    /// Sets @p text to the text at @p index. What an invalid index does is the derived class's matter.
    virtual void TextAt(int index, CString& text) const = 0;
    /// The number of texts.
    virtual int GetTextCount() const = 0;
    /// The first index whose text has the very bytes of @p text, or -1.
    virtual int FindFirstText(const char* text) const;

    /// The text at @p index.
    CString TextAt(int index) const;
};

/// A list of texts with an integer for each, searched both ways from the first entry on. Texts are compared
/// by their bytes, in every code page.
class KELGEN_API CBaseIntegerText : public CBaseTextArray
{
public:
    ~CBaseIntegerText() override;

    /// Fills @p out with all pairs in order, in place of what it held.
    virtual void GetMap(CBaseIntegerTextItemArray& out) const;
    /// True, and the integer of the first entry with that text; false with @p value unchanged when there is none.
    virtual bool MapAt(const char* text, int& value) const;
    /// True, and the text of the first entry with that integer; false with @p text unchanged when there is none.
    virtual bool MapAt(int value, CString& text) const;
    /// The first index with that text, or -1.
    virtual int GetTextIndex(const char* text) const;
    /// The first index with that integer, or -1.
    virtual int GetIntegerIndex(int value) const;
    /// The integer at @p index. What an invalid index does is the derived class's matter.
    virtual int IntegerAt(int index) const = 0;
};

/// A table that keeps its pairs in the order in which they were added.
///
///     CIntegerText levels;
///     levels.Add(0, "low");
///     levels.Add(1, "high");
///     int level = 0;
///     levels.MapAt("high", level);  // true, 1
///
/// Throws: IntegerAt and TextAt the invalid-argument exception for an index outside the table.
class KELGEN_API CIntegerText : public CBaseIntegerText
{
public:
    CIntegerText();
    CIntegerText(const CIntegerText& other);
    CIntegerText& operator=(const CIntegerText& other);
    ~CIntegerText() override;

    using CBaseTextArray::TextAt;
    void TextAt(int index, CString& text) const override;
    int GetTextCount() const override;
    bool MapAt(const char* text, int& value) const override;
    bool MapAt(int value, CString& text) const override;
    int GetTextIndex(const char* text) const override;
    int GetIntegerIndex(int value) const override;
    int IntegerAt(int index) const override;

    /// @p out becomes a copy of the pairs.
    virtual void GetMapArray(CBaseIntegerTextItemArray& out) const;
    /// The pairs become a copy of @p in; repetitions in it are kept.
    virtual void SetMapArray(const CBaseIntegerTextItemArray& in);

    /// Appends the pair. By contract: nothing happens, silently, when the integer or the text is there already, so that each stays
    /// unique.
    void Add(int value, const char* text);

private:
    CBaseIntegerTextItemArray m_items;
};
