// conversion.cpp: the peers' code pages. ICU and QStringConverter keep one open converter and write into a buffer that is
// there already; QString::fromLatin1/toLatin1 return a new string (and know Latin-1 only).
#include "../ConversionOperations.h"

#include <unicode/ucnv.h>

#include <QString>
#include <QStringConverter>

using namespace bench;

namespace {

struct IcuConv
{
    UConverter* c;
    explicit IcuConv(const char* page)
    {
        UErrorCode e = U_ZERO_ERROR;
        c = ucnv_open(page, &e);
        require(U_SUCCESS(e), "ucnv_open");
    }
    ~IcuConv() { ucnv_close(c); }
    std::size_t encode(std::u16string_view s, char* to, std::size_t room)
    {
        UErrorCode e = U_ZERO_ERROR;
        return ucnv_fromUChars(c, to, int(room), s.data(), int(s.size()), &e);
    }
    std::size_t decode(std::string_view s, char16_t* to, std::size_t room)
    {
        UErrorCode e = U_ZERO_ERROR;
        return ucnv_toUChars(c, to, int(room), s.data(), int(s.size()), &e);
    }
};

struct QtConv
{  // Qt 6.4 hands any page but UTF-8/16/32 and Latin-1 to ICU
    QStringEncoder out;
    QStringDecoder in;
    explicit QtConv(const char* page) : out(page), in(page) { require(out.isValid() && in.isValid(), "QStringConverter"); }
    std::size_t encode(std::u16string_view s, char* to, std::size_t)
    {
        return out.appendToBuffer(to, QStringView(s.data(), s.size())) - to;
    }
    std::size_t decode(std::string_view s, char16_t* to, std::size_t)
    {
        return in.appendToBuffer(reinterpret_cast<QChar*>(to), QByteArrayView(s.data(), s.size())) - reinterpret_cast<QChar*>(to);
    }
};

void Latin1Encode(State& st)
{
    const QString s = text<QString>(western(st.range(0), st.range(1)));
    for (auto _ : st) {
        QByteArray b = s.toLatin1();
        DoNotOptimize(b);
    }
    st.SetItemsProcessed(st.iterations() * s.size());
}

void Latin1Decode(State& st)
{
    const std::string s = narrow(western(st.range(0), st.range(1)));
    for (auto _ : st) {
        QString u = QString::fromLatin1(s.data(), s.size());
        DoNotOptimize(u);
    }
    st.SetItemsProcessed(st.iterations() * s.size());
}

#define CONVERTERS(op, sizes)                                                                                                              \
    BENCHMARK(op<IcuConv>)->Name("Convert/" #op "/ICU") sizes;                                                                             \
    BENCHMARK(op<QtConv>)->Name("Convert/" #op "/QStringConverter") sizes;

CONVERTERS(Cp1252Encode, WESTERN)
BENCHMARK(Latin1Encode)->Name("Convert/Cp1252Encode/QString_Latin1") WESTERN;
CONVERTERS(Cp1252Decode, WESTERN)
BENCHMARK(Latin1Decode)->Name("Convert/Cp1252Decode/QString_Latin1") WESTERN;
CONVERTERS(ShiftJisDecode, JAPANESE)
CONVERTERS(ShiftJisEncode, JAPANESE)

}  // namespace
