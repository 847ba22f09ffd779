// Misuse.cpp: who is told of a misuse, and what happens when nobody is.
#include <kelgen/platform/support/Assert.h>

#include <atomic>
#include <cstdarg>

namespace {

std::atomic<kelgen::MisuseHandler> handlerOfMisuse{nullptr};

}  // namespace

namespace kelgen {

MisuseHandler SetMisuseHandler(MisuseHandler handler)
{
    return handlerOfMisuse.exchange(handler);
}

void detail::ReportMisuse(const char* format, ...)
{
    char message[500];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    if (const MisuseHandler handler = handlerOfMisuse) {
        handler(message);
        return;
    }
    std::fprintf(stderr, "kelgen: %s\n", message);
    std::abort();
}

}  // namespace kelgen
