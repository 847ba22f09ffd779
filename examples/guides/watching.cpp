// watching.cpp: hearing of a file's changes, on the thread that works with it.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

/// Watches files and hands each alarm over to the thread that made it.
class Reload : public CFileChangeEvent
{
public:
    explicit Reload(std::function<void(EFileAlarm, CString)> function) : m_function(std::move(function)) {}
    /// First of all the alarms end: OnFileAlarm may be running on the other thread.
    ~Reload() override { EndWatch(); }

protected:
    /// Runs on the watching thread. It posts and returns: it must not wait for the thread that waits for it.
    void OnFileAlarm(EFileAlarm alarm, const char* path) override
    {
        m_tasks.Post([this, alarm, name = CString(path)] { m_function(alarm, name); });
    }

private:
    kelgen::ThreadTasks m_tasks;
    std::function<void(EFileAlarm, CString)> m_function;
};

void Write(const char* path, const char* text)
{
    std::ofstream(path) << text;
}

}  // namespace

int main()
{
    using namespace std::chrono_literals;
    Write("rates.txt", "1.17\n");
    // The watch compares times to the second: a file that is written twice within one has not changed.
    std::filesystem::last_write_time("rates.txt", std::filesystem::file_time_type::clock::now() - 1min);

    bool isSeen = false;
    Reload reload([&isSeen](CFileChangeEvent::EFileAlarm alarm, const CString& path) {
        std::string line;
        std::getline(std::ifstream(kelgen::ToPath(path)), line);
        std::cout << (alarm == CFileChangeEvent::FILE_ALARM_MODIFIED ? "modified: " : "other: ") << path << " says " << line << '\n';
        isSeen = true;
    });
    // A file without a drive lies in the current folder.
    reload.AddFile("rates.txt");
    reload.StartWatch();
    std::cout << "watching: " << reload.IsWatching() << '\n';

    // The work of others. A watch begins some time after StartWatch, and sees what has changed since AddFile.
    const kelgen::Timer other(50ms, [] { Write("rates.txt", "1.18\n"); });
    const kelgen::Timer giveUp(30s, [] { ::PostQuitMessage(1); });

    // Tasks, timers and windows live from the thread's messages.
    MSG message;
    while (!isSeen && ::GetMessageA(&message, nullptr, 0, 0) > 0)
        ::DispatchMessageA(&message);
    return isSeen ? 0 : 1;
}
