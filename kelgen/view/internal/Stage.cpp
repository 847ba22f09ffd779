// Stage.cpp: drawing what has changed, and versions by which pages get only that.
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

bool Stage::Keep(Drawn& drawn, std::string element)
{
    if (drawn.version != 0 && drawn.element == element)
        return false;
    drawn.element = std::move(element);
    drawn.version = m_version + 1;
    return true;
}

void Stage::Draw()
{
    DesktopPicture picture = TakeDesktopPicture(nullptr, kPatience, &m_last);
    SvgDesktop desktop(picture, EIds::handle);
    std::vector<std::pair<std::string, std::string>> elements;
    for (const std::size_t window : desktop.FromBottom())
        elements.emplace_back(desktop.IdOf(window), desktop.TopLevel(window));
    std::string menus = desktop.Menus();
    std::string title = TitleOf(picture);
    bool hasChanged = false;
    {
        const std::lock_guard lock(m_lock);
        std::vector<std::string> order;
        std::map<std::string, Drawn> windows;
        for (auto& [id, element] : elements) {
            order.push_back(id);
            Drawn& drawn = windows[id];
            if (const auto old = m_windows.find(id); old != m_windows.end())
                drawn = std::move(old->second);
            hasChanged = Keep(drawn, std::move(element)) || hasChanged;
        }
        hasChanged = Keep(m_menus, std::move(menus)) || hasChanged;
        if (order != m_order || title != m_title || m_orderVersion == 0) {
            m_orderVersion = m_version + 1;
            hasChanged = true;
        }
        m_windows = std::move(windows);
        m_order = std::move(order);
        m_title = std::move(title);
        m_size = picture.size;
        m_version += hasChanged;
    }
    m_last = std::move(picture);
    if (hasChanged)
        m_onChange();
}

std::string Stage::ChangesSince(std::uint64_t& seen)
{
    const std::lock_guard lock(m_lock);
    if (seen == m_version)
        return {};
    std::string json =
        "{\"width\":" + std::to_string(m_size.cx) + ",\"height\":" + std::to_string(m_size.cy) + ",\"title\":" + Json(m_title);
    json += ",\"order\":[";
    for (std::size_t i = 0; i < m_order.size(); ++i)
        json += (i ? "," : "") + Json(m_order[i]);
    json += "],\"changed\":{";
    bool isFirst = true;
    for (const auto& [id, drawn] : m_windows) {
        if (drawn.version <= seen)
            continue;
        json += (isFirst ? "" : ",") + Json(id) + ':' + Json(drawn.element);
        isFirst = false;
    }
    json += '}';
    if (m_menus.version > seen)
        json += ",\"menus\":" + Json(m_menus.element);
    seen = m_version;
    return json + '}';
}

}  // namespace kelgen::view::detail
