// Stage.h: the desktop as pages see it: drawn again when it has changed, by a thread of its own that also feeds in their input.
#pragma once

#include <kelgen/platform/support/DesktopPicture.h>
#include <kelgen/view/Export.h>
#include <kelgen/view/internal/Input.h>

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace kelgen::view::detail {

class KELGEN_VIEW_TESTED_API Stage
{
public:
    /// @p onChange is called when there is something new for the pages; on the stage's thread.
    explicit Stage(std::function<void()> onChange) : m_onChange(std::move(onChange)) {}

    /// Draws until the process ends. Sleeps while nobody looks.
    void Run();

    // Threads: any.

    /// How many look.
    void SetViewers(int count);
    /// Feeds input in, in the order of the calls. Dropped when 5000 events wait.
    void Feed(const std::vector<INPUT>& inputs);
    /// As JSON what has changed since @p seen, which moves on; empty when nothing has.
    std::string ChangesSince(std::uint64_t& seen);

private:
    /// A text, and the number of the picture in which it was new.
    struct Drawn
    {
        std::string text;
        std::uint64_t version = 0;
    };
    struct DrawnWindow
    {
        Drawn element;  // alone
        Drawn within;   // the ids of the windows in it, as an array of JSON
    };
    struct Shown
    {
        std::map<std::string, DrawnWindow> windows;
        Drawn menus;
        Drawn desktop;  // size, title and order of its windows, as members of JSON
    };

    bool TakeInput(std::vector<INPUT>& inputs);
    void Draw();
    bool Show(Shown shown);

    std::function<void()> m_onChange;
    DesktopPicture m_last;  // the stage's thread alone
    // Of the time before anybody can look: who does so before the thread's first step is not missed.
    unsigned m_seen = DesktopChanges();

    std::mutex m_lock;
    int m_viewers = 0;
    std::vector<INPUT> m_input;
    HeldInput m_held;
    std::uint64_t m_version = 0;
    Shown m_shown;
};

}  // namespace kelgen::view::detail
