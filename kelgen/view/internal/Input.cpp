// Input.cpp: reading the lines of a page.
#include <kelgen/view/internal/Input.h>

#include <algorithm>
#include <charconv>

namespace kelgen::view::detail {

namespace {

constexpr std::size_t kMostLines = 500;

/// The next word of @p line, which loses it.
std::string_view TakeWord(std::string_view& line)
{
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string_view word = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return word;
}

std::optional<int> NumberFrom(std::string_view word, int least, int most, int base = 10)
{
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number, base);
    if (error != std::errc() || end != word.data() + word.size() || number < least || number > most)
        return std::nullopt;
    return number;
}

INPUT Mouse(DWORD flags, int x = 0, int y = 0, int data = 0)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi = {x, y, static_cast<DWORD>(data), flags, 0, 0};
    return input;
}

INPUT Key(int key, DWORD flags, int scan = 0)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki = {static_cast<WORD>(key), static_cast<WORD>(scan), flags, 0, 0};
    return input;
}

// The keys that have an extended scan code.
bool IsExtended(int key)
{
    return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE || key == VK_RCONTROL || key == VK_RMENU;
}

/// An absolute place is told in parts of 65536 of the screen, of which the platform takes the pixel that they lie in.
LONG PartOf(int pixel, int size)
{
    return static_cast<LONG>((static_cast<long long>(pixel) * 65536 + size - 1) / size);
}

bool ReadMove(std::string_view line, std::vector<INPUT>& inputs)
{
    const int width = ::GetSystemMetrics(SM_CXSCREEN);
    const int height = ::GetSystemMetrics(SM_CYSCREEN);
    const auto x = NumberFrom(TakeWord(line), -100000, 100000);
    const auto y = NumberFrom(TakeWord(line), -100000, 100000);
    if (!x || !y || !line.empty())
        return false;
    inputs.push_back(Mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, PartOf(std::clamp(*x, 0, width - 1), width),
                           PartOf(std::clamp(*y, 0, height - 1), height)));
    return true;
}

bool ReadButton(std::string_view name, bool isDown, std::vector<INPUT>& inputs)
{
    static constexpr struct
    {
        std::string_view name;
        DWORD down;
    } kButtons[] = {{"left", MOUSEEVENTF_LEFTDOWN}, {"middle", MOUSEEVENTF_MIDDLEDOWN}, {"right", MOUSEEVENTF_RIGHTDOWN}};
    for (const auto& button : kButtons) {
        if (button.name != name)
            continue;
        // The flag of a release is the next one.
        inputs.push_back(Mouse(isDown ? button.down : button.down << 1));
        return true;
    }
    return false;
}

bool ReadKey(std::string_view word, DWORD flags, std::vector<INPUT>& inputs)
{
    const auto key = NumberFrom(word, 1, 254);
    if (!key)
        return false;
    inputs.push_back(Key(*key, flags | (IsExtended(*key) ? KEYEVENTF_EXTENDEDKEY : 0)));
    return true;
}

bool ReadText(std::string_view word, std::vector<INPUT>& inputs)
{
    const auto unit = NumberFrom(word, 1, 0xFFFF, 16);
    if (!unit)
        return false;
    inputs.push_back(Key(0, KEYEVENTF_UNICODE, *unit));
    inputs.push_back(Key(0, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP, *unit));
    return true;
}

bool ReadWheel(std::string_view word, std::vector<INPUT>& inputs)
{
    const auto steps = NumberFrom(word, -100, 100);
    if (!steps)
        return false;
    inputs.push_back(Mouse(MOUSEEVENTF_WHEEL, 0, 0, *steps * WHEEL_DELTA));
    return true;
}

bool ReadLine(std::string_view line, std::vector<INPUT>& inputs)
{
    const std::string_view kind = TakeWord(line);
    if (kind == "move")
        return ReadMove(line, inputs);
    if (kind == "down" || kind == "up")
        return ReadButton(line, kind == "down", inputs);
    if (kind == "wheel")
        return ReadWheel(line, inputs);
    if (kind == "press" || kind == "release")
        return ReadKey(line, kind == "press" ? 0 : KEYEVENTF_KEYUP, inputs);
    return kind == "text" && ReadText(line, inputs);
}

}  // namespace

std::optional<std::vector<INPUT>> ReadInput(std::string_view lines)
{
    std::vector<INPUT> inputs;
    for (std::size_t count = 0; !lines.empty(); ++count) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        if (count == kMostLines || !ReadLine(lines.substr(0, end), inputs))
            return std::nullopt;
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return inputs;
}

void HeldInput::Note(const std::vector<INPUT>& inputs)
{
    constexpr DWORD kPresses = MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_MIDDLEDOWN | MOUSEEVENTF_RIGHTDOWN;
    for (const INPUT& input : inputs) {
        if (input.type == INPUT_KEYBOARD) {
            m_keys[input.ki.wVk & 0xFF] = !(input.ki.dwFlags & (KEYEVENTF_KEYUP | KEYEVENTF_UNICODE));
            continue;
        }
        m_buttons |= input.mi.dwFlags & kPresses;
        m_buttons &= ~(input.mi.dwFlags >> 1 & kPresses);
    }
}

std::vector<INPUT> HeldInput::LetGo()
{
    std::vector<INPUT> inputs;
    for (int key = 0; key < 256; ++key)
        if (m_keys[key])
            inputs.push_back(Key(key, KEYEVENTF_KEYUP | (IsExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0)));
    for (const DWORD down : {DWORD{MOUSEEVENTF_LEFTDOWN}, DWORD{MOUSEEVENTF_MIDDLEDOWN}, DWORD{MOUSEEVENTF_RIGHTDOWN}})
        if (m_buttons & down)
            inputs.push_back(Mouse(down << 1));
    *this = {};
    return inputs;
}

}  // namespace kelgen::view::detail
