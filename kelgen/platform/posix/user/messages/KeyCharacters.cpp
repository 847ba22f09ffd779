// KeyCharacters.cpp: TranslateMessage, with the characters of a US keyboard.
#include <kelgen/platform/posix/user/api/MessageCalls.h>

#include <kelgen/platform/posix/user/messages/InputEvents.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>

#include <algorithm>
#include <iterator>

namespace kelgen::posix::user {

namespace {

struct KeyCharacter
{
    BYTE key;
    char plain;
    char shifted;  // 0: none
};

constexpr KeyCharacter kCharacters[] = {
    {VK_BACK, 8, 8},           {VK_TAB, 9, 9},        {VK_RETURN, 13, 13},     {VK_ESCAPE, 27, 27},      {VK_SPACE, ' ', ' '},
    {'0', '0', ')'},           {'1', '1', '!'},       {'2', '2', '@'},         {'3', '3', '#'},          {'4', '4', '$'},
    {'5', '5', '%'},           {'6', '6', '^'},       {'7', '7', '&'},         {'8', '8', '*'},          {'9', '9', '('},
    {VK_MULTIPLY, '*', '*'},   {VK_ADD, '+', '+'},    {VK_SEPARATOR, '.', 0},  {VK_SUBTRACT, '-', '-'},  {VK_DECIMAL, '.', 0},
    {VK_DIVIDE, '/', '/'},     {VK_OEM_1, ';', ':'},  {VK_OEM_PLUS, '=', '+'}, {VK_OEM_COMMA, ',', '<'}, {VK_OEM_MINUS, '-', '_'},
    {VK_OEM_PERIOD, '.', '>'}, {VK_OEM_2, '/', '?'},  {VK_OEM_3, '`', '~'},    {VK_OEM_4, '[', '{'},     {VK_OEM_5, '\\', '|'},
    {VK_OEM_6, ']', '}'},      {VK_OEM_7, '\'', '"'}, {VK_OEM_102, '<', '>'}};

// What the control key makes of a key, without and with the shift key; -1: none.
struct ControlCharacter
{
    BYTE key;
    int plain;
    int shifted;
};

constexpr ControlCharacter kControls[] = {
    {VK_BACK, 8, 8},    {VK_RETURN, 10, -1},     {VK_ESCAPE, 27, 27}, {VK_SPACE, ' ', 0},      {'2', -1, 0},
    {'6', -1, 30},      {VK_MULTIPLY, '*', '*'}, {VK_ADD, '+', '+'},  {VK_SUBTRACT, '-', '-'}, {VK_DIVIDE, '/', '/'},
    {VK_OEM_4, 27, 27}, {VK_OEM_5, 28, 28},      {VK_OEM_6, 29, 29},  {VK_OEM_MINUS, -1, 31},  {VK_OEM_3, -1, 30}};

int ControlCharacterOf(BYTE key, bool shift)
{
    if (key >= 'A' && key <= 'Z')
        return key - 'A' + 1;
    const auto* found = std::find_if(std::begin(kControls), std::end(kControls), [key](const auto& row) { return row.key == key; });
    if (found == std::end(kControls))
        return -1;
    return shift ? found->shifted : found->plain;
}

}  // namespace

int CharacterOf(BYTE key, const KeyStates& states)
{
    const bool shift = (states[VK_SHIFT] & 0x80) != 0;
    const bool control = (states[VK_CONTROL] & 0x80) != 0;
    const bool alt = (states[VK_MENU] & 0x80) != 0;
    if (control)
        return alt ? -1 : ControlCharacterOf(key, shift);
    if (key >= 'A' && key <= 'Z') {
        const bool capital = shift != ((states[VK_CAPITAL] & 1) != 0);
        return capital ? key : key - 'A' + 'a';
    }
    const auto* found = std::find_if(std::begin(kCharacters), std::end(kCharacters), [key](const auto& row) { return row.key == key; });
    if (found == std::end(kCharacters) || (shift && !found->shifted))
        return -1;
    return shift ? found->shifted : found->plain;
}

}  // namespace kelgen::posix::user

using namespace kelgen::posix::user;

BOOL TranslateMessage(const MSG* message)
{
    if (message->message < WM_KEYDOWN || message->message > WM_SYSKEYUP)
        return FALSE;
    const bool system = message->message == WM_SYSKEYDOWN;
    if (message->message == WM_KEYUP || message->message == WM_SYSKEYUP)
        return TRUE;
    if (message->message != WM_KEYDOWN && !system)
        return FALSE;

    const UINT number = system ? WM_SYSCHAR : WM_CHAR;
    if (message->wParam == VK_PACKET) {
        PostMessageW(message->hwnd, number, HIWORD(message->lParam), 1);
        return TRUE;
    }
    const int character = CharacterOf(static_cast<BYTE>(message->wParam), CurrentQueue().keys);
    if (character >= 0)
        PostMessageW(message->hwnd, number, static_cast<WPARAM>(character), message->lParam);
    return TRUE;
}
