// SystemMessages.cpp: the texts of the error codes that calls here set.
#include <kelgen/platform/posix/nls/SystemMessages.h>

#include <algorithm>
#include <iterator>

namespace kelgen::posix {

namespace {

struct Message
{
    DWORD id;
    std::string_view text;
};

// In the order of the codes.
constexpr Message kMessages[] = {
    {0, "Success.\n"},
    {1, "Invalid function.\n"},
    {2, "File not found.\n"},
    {3, "Path not found.\n"},
    {4, "Too many open files.\n"},
    {5, "Access denied.\n"},
    {6, "Invalid handle.\n"},
    {8, "Not enough memory.\n"},
    {13, "Invalid data.\n"},
    {14, "Out of memory.\n"},
    {15, "Invalid drive.\n"},
    {18, "No more files.\n"},
    {19, "Write protected.\n"},
    {21, "Not ready.\n"},
    {25, "Seek error.\n"},
    {29, "Write error.\n"},
    {30, "Read error.\n"},
    {31, "General failure.\n"},
    {32, "Sharing violation.\n"},
    {33, "Lock violation.\n"},
    {38, "End of file.\n"},
    {39, "Disk full.\n"},
    {50, "Request not supported.\n"},
    {80, "File already exists.\n"},
    {82, "Cannot create.\n"},
    {87, "Invalid parameter.\n"},
    {109, "Broken pipe.\n"},
    {112, "Insufficient disk space.\n"},
    {120, "Call not implemented.\n"},
    {122, "Insufficient buffer.\n"},
    {123, "Invalid name.\n"},
    {126, "Module not found.\n"},
    {127, "Procedure not found.\n"},
    {145, "Directory not empty.\n"},
    {170, "Resource busy.\n"},
    {183, "Already exists.\n"},
    {193, "Bad EXE format.\n"},
    {206, "Filename extension too long.\n"},
    {234, "More data available.\n"},
    {259, "No more data available.\n"},
    {267, "Invalid directory name.\n"},
    {288, "Not owner.\n"},
    {298, "Too many semaphore posts.\n"},
    {487, "Invalid address.\n"},
    {1004, "Invalid flags.\n"},
    {1018, "Key deleted.\n"},
    {1053, "Service request timeout.\n"},
    {1056, "Service already running.\n"},
    {1058, "Service disabled.\n"},
    {1060, "Service does not exist.\n"},
    {1062, "Service not active.\n"},
    {1073, "Service exists.\n"},
    {1077, "Service never started.\n"},
    {1113, "No mapping for the Unicode character.\n"},
    {1400, "Invalid window handle.\n"},
    {1413, "Invalid index.\n"},
    {1812, "No resources in file.\n"},
    {1813, "Resource type not found.\n"},
    {1814, "Resource name not found.\n"},
    {1815, "Resource language not found.\n"},
    {0x80004001, "Not implemented.\n"},
    {0x80004002, "Interface not supported.\n"},
    {0x80004003, "Invalid pointer.\n"},
    {0x80004005, "Call failed.\n"},
};
static_assert(std::ranges::is_sorted(kMessages, {}, &Message::id));

}  // namespace

std::string_view SystemMessage(DWORD id)
{
    constexpr DWORD kFailureOfTheSystem = 0x80070000;
    const DWORD wanted = (id & 0xFFFF0000) == kFailureOfTheSystem ? id & 0xFFFF : id;
    const auto* found = std::lower_bound(std::begin(kMessages), std::end(kMessages), wanted,
                                         [](const Message& message, DWORD key) { return message.id < key; });
    return found != std::end(kMessages) && found->id == wanted ? found->text : std::string_view{};
}

}  // namespace kelgen::posix
