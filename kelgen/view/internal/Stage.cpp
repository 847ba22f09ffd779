// Stage.cpp: drawing what has changed, and versions by which pages get only what they lack.
#include <kelgen/view/internal/Stage.h>

#include <kelgen/view/internal/SvgDesktop.h>

#include <chrono>
#include <cstdio>
#include <thread>

namespace kelgen::view::detail {

namespace {

constexpr DWORD kPatience = 50;  // milliseconds, for threads that do not serve their sends
constexpr DWORD kLookAgain = 1000;
constexpr DWORD kForInput = 10;
constexpr auto kBetweenPictures = std::chrono::milliseconds(10);
constexpr std::size_t kMostInput = 5000;

std::string Json(const std::string& text)
{
    std::string out = "\"";
    for (const char byte : text) {
        const auto code = static_cast<unsigned char>(byte);
        if (byte == '"' || byte == '\\') {
            out += {'\\', byte};
        } else if (code < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", code);
            out += escape;
        } else {
            out += byte;
        }
    }
    return out + '"';
}

std::string TitleOf(const DesktopPicture& picture)
{
    for (const WindowPicture& window : picture.windows)
        if (window.parent < 0 && !window.owner && !window.text.empty())
            return Escaped(window.text);
    return {};
}

std::string IdsOf(const SvgDesktop& desktop, const std::vector<std::size_t>& windows)
{
    std::string ids = "[";
    for (const std::size_t window : windows)
        ids += (ids.size() == 1 ? "" : ",") + Json(desktop.IdOf(window));
    return ids + ']';
}

}  // namespace

void Stage::Run()
{
    bool isWatching = false;
    for (;;) {
        m_seen = WaitForDesktopChange(m_seen, isWatching ? kLookAgain : INFINITE);
        std::vector<INPUT> inputs;
        const bool hasViewers = TakeInput(inputs);
        if (hasViewers != isWatching) {
            WatchDesktop(hasViewers);
            isWatching = hasViewers;
        }
        if (!inputs.empty()) {
            const unsigned before = DesktopChanges();
            ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
            // A picture from before the host has handled it would put off the one that shows what it did.
            if (isWatching)
                m_seen = WaitForDesktopChange(before, kForInput);
        }
        if (!isWatching)
            continue;
        Draw();
        std::this_thread::sleep_for(kBetweenPictures);
    }
}

bool Stage::TakeInput(std::vector<INPUT>& inputs)
{
    const std::lock_guard lock(m_lock);
    inputs.swap(m_input);
    return m_viewers > 0;
}

void Stage::SetViewers(int count)
{
    {
        const std::lock_guard lock(m_lock);
        m_viewers = count;
        if (count == 0) {
            const std::vector<INPUT> released = m_held.LetGo();
            m_input.insert(m_input.end(), released.begin(), released.end());
        }
    }
    MarkDesktopChange();
}

void Stage::Feed(const std::vector<INPUT>& inputs)
{
    {
        const std::lock_guard lock(m_lock);
        if (m_input.size() + inputs.size() > kMostInput)
            return;
        m_input.insert(m_input.end(), inputs.begin(), inputs.end());
        m_held.Note(inputs);
    }
    MarkDesktopChange();
}

void Stage::Draw()
{
    DesktopPicture picture = TakeDesktopPicture(nullptr, kPatience, &m_last);
    SvgDesktop desktop(picture, EIds::handle);
    Shown shown;
    const std::vector<std::size_t> order = desktop.FromBottom();
    for (std::vector<std::size_t> waiting = order; !waiting.empty();) {
        const std::size_t window = waiting.back();
        waiting.pop_back();
        const std::vector<std::size_t> within = desktop.Within(window);
        waiting.insert(waiting.end(), within.begin(), within.end());
        shown.windows[desktop.IdOf(window)] = {{desktop.Alone(window)}, {IdsOf(desktop, within)}};
    }
    shown.menus.text = desktop.Menus();
    shown.desktop.text = "\"width\":" + std::to_string(picture.size.cx) + ",\"height\":" + std::to_string(picture.size.cy) +
                         ",\"title\":" + Json(TitleOf(picture)) + ",\"order\":" + IdsOf(desktop, order);
    m_last = std::move(picture);
    if (Show(std::move(shown)))
        m_onChange();
}

bool Stage::Show(Shown shown)
{
    const std::lock_guard lock(m_lock);
    bool hasChanged = false;
    const auto mark = [this, &hasChanged](Drawn& drawn, const Drawn& before) {
        const bool isOld = before.version != 0 && before.text == drawn.text;
        drawn.version = isOld ? before.version : m_version + 1;
        hasChanged = hasChanged || !isOld;
    };
    const DrawnWindow none;
    for (auto& [id, window] : shown.windows) {
        const auto before = m_shown.windows.find(id);
        const DrawnWindow& old = before == m_shown.windows.end() ? none : before->second;
        mark(window.element, old.element);
        mark(window.within, old.within);
    }
    mark(shown.menus, m_shown.menus);
    mark(shown.desktop, m_shown.desktop);
    m_shown = std::move(shown);
    m_version += hasChanged;
    return hasChanged;
}

std::string Stage::ChangesSince(std::uint64_t& seen)
{
    const std::lock_guard lock(m_lock);
    if (seen == m_version)
        return {};
    std::string json;
    const auto begin = [&json](const std::string& name) { json += (json.ends_with('{') ? "" : ",") + Json(name) + ':'; };
    json = "{\"changed\":{";
    for (const auto& [id, window] : m_shown.windows) {
        if (window.element.version <= seen)
            continue;
        begin(id);
        json += Json(window.element.text);
    }
    json += "},\"within\":{";
    for (const auto& [id, window] : m_shown.windows) {
        if (window.within.version <= seen)
            continue;
        begin(id);
        json += window.within.text;
    }
    json += '}';
    if (m_shown.menus.version > seen)
        json += ",\"menus\":" + Json(m_shown.menus.text);
    if (m_shown.desktop.version > seen)
        json += ',' + m_shown.desktop.text;
    seen = m_version;
    return json + '}';
}

}  // namespace kelgen::view::detail
