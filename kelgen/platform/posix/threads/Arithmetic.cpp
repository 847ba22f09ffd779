// Arithmetic.cpp: MulDiv.
#include <kelgen/platform/posix/threads/api/Arithmetic.h>

#include <limits>

int MulDiv(int number, int numerator, int denominator)
{
    if (denominator == 0)
        return -1;
    const long long product = static_cast<long long>(number) * numerator;
    const long long divisor = denominator;
    const long long half = (divisor < 0 ? -divisor : divisor) / 2;
    const long long quotient = (product < 0 ? product - half : product + half) / divisor;
    if (quotient > std::numeric_limits<int>::max() || quotient < std::numeric_limits<int>::min())
        return -1;
    return static_cast<int>(quotient);
}
