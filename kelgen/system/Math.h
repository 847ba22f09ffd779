// Math.h: small numeric and logical operations.
#pragma once

#include <kelgen/Export.h>

/// Rounding, ranges and bits. A real number that does not fit an int is truncated to INT_MIN.
class KELGEN_API CMath
{
public:
    CMath();
    virtual ~CMath();
    CMath(const CMath&) = default;
    CMath& operator=(const CMath&) = default;

    /// 4 times the arc tangent of 1.
    double GetPi() const { return m_pi; }

    /// Returns 1 if @p n is a power of two of at least 2; 0 otherwise. By contract: 1 does not count as one, as hosts
    /// look for a bit to shift.
    static int IsPowerOfTwo(unsigned n);

    /// The low @p bits bits of @p value in reverse order: bit 0 becomes bit @p bits - 1. 0 for no bits.
    static unsigned ReverseBits(unsigned value, unsigned bits);

    /// A random number of the range from @p lo to @p hi, plus 0.5, truncated toward zero: both ends can occur where @p lo is 0 or more;
    /// below 0, where that rounds toward zero, a negative @p lo comes hardly ever or never, and -1 may give 0.
    /// By contract: one number of the runtime's 15-bit generator, so that wide ranges have gaps. The host's srand seeds it.
    int RandRange(int lo, int hi);

    /// The value at @p x on the line through (@p x0, @p y0) and (@p x1, @p y1), plus 0.5, truncated toward zero.
    int LinearMap(int y0, int y1, int x, int x0, int x1);

    /// The value at @p x on the line through (@p x0, @p y0) and (@p x1, @p y1), not rounded.
    double LinearMap(double y0, double y1, double x, double x0, double x1);

    /// @p a plus the part @p rate of the way to @p b, that part truncated toward zero.
    int RangeRate(int a, int b, double rate);

    /// Lowers @p *v to @p limit when it is above; what is no number stays.
    static void MaxClip(double* v, double limit);

    /// Raises @p *v to @p limit when it is below; what is no number stays.
    static void MinClip(double* v, double limit);

    /// @p x to the nearest whole number, halves upward. By contract: -1.5 gives -1, but what is below it, such as -1.7, gives -1 too:
    /// negative numbers are truncated toward zero.
    static int MidUpRound(double x);

private:
    double m_pi;
};

/// Implications.
class KELGEN_API CLogic
{
public:
    virtual ~CLogic();

    /// Whether @p a implies @p b.
    static bool ForwardConditional(bool a, bool b);

    /// Whether @p a implies @p b. By contract: the same as ForwardConditional, so a host that wants the converse exchanges the arguments.
    static bool ReverseConditional(bool a, bool b);
};
