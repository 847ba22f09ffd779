// ExceptionLine.cpp: what a handler has caught, in one line.
#include <kelgen/framework/base/Exceptions.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <new>

#include <cxxabi.h>

namespace kelgen::detail {

namespace {

struct Freed
{
    void operator()(char* text) const { std::free(text); }
};

// One line: a message ends where the system's own ends its first.
void WriteLine(LPSTR text, UINT capacity, const char* name, const char* message) noexcept
{
    std::snprintf(text, capacity, *message ? "%s: %s" : "%s", name, message);
    text[std::strcspn(text, "\r\n")] = 0;
}

void DescribeFramework(const CException& exception, LPSTR text, UINT capacity) noexcept
{
    char name[200];
    WriteClassName(typeid(exception), name, sizeof name);
    char message[512] = "";
    try {
        exception.GetErrorMessage(message, sizeof message);
    } catch (...) {
        // Memory, most likely; the class says enough.
    }
    WriteLine(text, capacity, name, message);
}

}  // namespace

void WriteClassName(const std::type_info& type, LPSTR text, UINT capacity) noexcept
{
    if (capacity == 0)
        return;
    int status = 0;
    const std::unique_ptr<char, Freed> name(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status));
    std::snprintf(text, capacity, "%s", name ? name.get() : type.name());
}

void DescribeCaught(LPSTR text, UINT capacity) noexcept
{
    if (capacity == 0)
        return;
    char name[200] = "an exception";
    if (const std::type_info* const type = abi::__cxa_current_exception_type())
        WriteClassName(*type, name, sizeof name);
    try {
        throw;
    } catch (const CException* exception) {
        if (exception)
            DescribeFramework(*exception, text, capacity);
        else
            WriteLine(text, capacity, name, "");
    } catch (const std::exception& exception) {
        WriteLine(text, capacity, name, exception.what());
    } catch (const char* message) {
        WriteLine(text, capacity, "text", message ? message : "");
    } catch (...) {
        WriteLine(text, capacity, name, "");
    }
}

}  // namespace kelgen::detail
