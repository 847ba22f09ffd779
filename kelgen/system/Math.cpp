// Math.cpp: small numeric and logical operations.
#include <kelgen/system/Math.h>

#include <kelgen/platform/support/RuntimeRandom.h>

#include <algorithm>
#include <climits>
#include <cmath>

namespace {

int Truncated(double value)
{
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int>(value) : INT_MIN;
}

}  // namespace

CMath::CMath() : m_pi(4 * std::atan(1.0)) {}

CMath::~CMath() = default;

int CMath::IsPowerOfTwo(unsigned n)
{
    return n >= 2 && (n & (n - 1)) == 0;
}

unsigned CMath::ReverseBits(unsigned value, unsigned bits)
{
    unsigned reversed = 0;
    for (unsigned i = std::min(bits, 64u); i > 0; --i) {
        reversed = (reversed << 1) | (value & 1);
        value >>= 1;
    }
    return reversed;
}

int CMath::RandRange(int lo, int hi)
{
    constexpr double kPerStep = 3.051850947599719e-05;  // 1 / 32767
    return Truncated(kelgen::RuntimeRand() * (static_cast<double>(hi) - lo) * kPerStep + lo + 0.5);
}

int CMath::LinearMap(int y0, int y1, int x, int x0, int x1)
{
    return Truncated(LinearMap(static_cast<double>(y0), static_cast<double>(y1), static_cast<double>(x), static_cast<double>(x0),
                               static_cast<double>(x1)) +
                     0.5);
}

double CMath::LinearMap(double y0, double y1, double x, double x0, double x1)
{
    return (y1 - y0) / (x1 - x0) * (x - x0) + y0;
}

int CMath::RangeRate(int a, int b, double rate)
{
    const double way = static_cast<double>(b) - a;
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(Truncated(way * rate)));
}

void CMath::MaxClip(double* v, double limit)
{
    if (*v > limit)
        *v = limit;
}

void CMath::MinClip(double* v, double limit)
{
    if (*v < limit)
        *v = limit;
}

int CMath::MidUpRound(double x)
{
    const int whole = Truncated(x);
    // What fits no int is INT_MIN, whatever its distance from that.
    return x < INT_MAX && x - whole >= 0.5 ? whole + 1 : whole;
}

CLogic::~CLogic() = default;

bool CLogic::ForwardConditional(bool a, bool b)
{
    return !a || b;
}

bool CLogic::ReverseConditional(bool a, bool b)
{
    return b || !a;
}
