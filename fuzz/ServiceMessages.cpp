// ServiceMessages.cpp: any bytes as what a service's starter sends, as a control, and as the record of a service.
#include "HomeFolder.h"

#include <kelgen/platform/posix/services/ServiceRecords.h>
#include <kelgen/platform/posix/services/ServiceStart.h>

#include <sys/socket.h>
#include <unistd.h>

using namespace fuzz;
using namespace kelgen::posix;

namespace {

// What a peer receives of @p bytes before the connection ends.
class Sent
{
public:
    explicit Sent(const std::string& bytes)
    {
        Require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_ends) == 0);
        Require(SendBytes(m_ends[0], bytes) && shutdown(m_ends[0], SHUT_WR) == 0);
    }
    ~Sent()
    {
        close(m_ends[0]);
        close(m_ends[1]);
    }
    Sent(const Sent&) = delete;
    Sent& operator=(const Sent&) = delete;

    int Get() const { return m_ends[1]; }

private:
    int m_ends[2];
};

constexpr ULONGLONG kNever = ~ULONGLONG{0};

void Start(const std::string& bytes)
{
    const Sent sent(bytes);
    const auto start = ReadStartMessage(sent.Get(), kNever);
    if (start)
        Require(bytes.starts_with(StartMessage(start->name, start->arguments)));
}

void Control(const std::string& bytes)
{
    const Sent sent(bytes);
    const auto control = ReadControl(sent.Get());
    Require(!control || (IsControl(*control) && bytes.size() >= sizeof *control));
}

void Record(const std::string& bytes)
{
    static const ServiceFolder folder(u"fuzz");
    static const Descriptor file = folder.Open("status");
    Require(ftruncate(file.Get(), 0) == 0 && pwrite(file.Get(), bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    const DWORD state = folder.Read(SERVICE_WIN32_OWN_PROCESS).status.dwCurrentState;
    Require(state >= SERVICE_STOPPED && state <= SERVICE_PAUSED);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    const unsigned kind = input.Below(3);
    const std::string bytes = input.Rest<char>();
    if (kind == 0)
        Start(bytes);
    else if (kind == 1)
        Control(bytes);
    else
        Record(bytes);
    return 0;
}
