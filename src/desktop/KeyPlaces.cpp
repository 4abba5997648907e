#include "desktop/KeyPlaces.h"

#include <Qt>
#include <array>
#include <utility>

namespace Desktop {

namespace {

// From 0x01 on; 0: none.
constexpr std::array<std::uint8_t, 0x58> plain{
    27,  '1', '2', '3', '4', '5', '6', '7', '8', '9', '0', 189, 187, 8,   9,   'Q', 'W', 'E', 'R', 'T', 'Y', 'U',
    'I', 'O', 'P', 219, 221, 13,  17,  'A', 'S', 'D', 'F', 'G', 'H', 'J', 'K', 'L', 186, 222, 192, 16,  220, 'Z',
    'X', 'C', 'V', 'B', 'N', 'M', 188, 190, 191, 161, 106, 164, 32,  20,  112, 113, 114, 115, 116, 117, 118, 119,
    120, 121, 144, 145, 103, 104, 105, 109, 100, 101, 102, 107, 97,  98,  99,  96,  110, 0,   0,   0,   122, 123};

constexpr std::pair<std::uint32_t, std::uint8_t> extendedPlaces[]{
    {0x1C, 226}, {0x1D, 225}, {0x35, 111}, {0x37, 5},  {0x38, 165}, {0x45, 144}, {0x46, 19},
    {0x47, 36},  {0x48, 38},  {0x49, 33},  {0x4B, 37}, {0x4D, 39},  {0x4F, 35},  {0x50, 40},
    {0x51, 34},  {0x52, 45},  {0x53, 46},  {0x5B, 91}, {0x5C, 92},  {0x5D, 93}};

constexpr std::pair<int, std::uint8_t> toolkitKeys[]{
    {Qt::Key_Escape, 27},       {Qt::Key_Tab, 9},         {Qt::Key_Backspace, 8},      {Qt::Key_Return, 13},
    {Qt::Key_Enter, 226},       {Qt::Key_Insert, 45},     {Qt::Key_Delete, 46},        {Qt::Key_Pause, 19},
    {Qt::Key_Home, 36},         {Qt::Key_End, 35},        {Qt::Key_Left, 37},          {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},        {Qt::Key_Down, 40},       {Qt::Key_PageUp, 33},        {Qt::Key_PageDown, 34},
    {Qt::Key_Shift, 16},        {Qt::Key_Control, 17},    {Qt::Key_Alt, 164},          {Qt::Key_CapsLock, 20},
    {Qt::Key_Space, 32},        {Qt::Key_Semicolon, 186}, {Qt::Key_Equal, 187},        {Qt::Key_Comma, 188},
    {Qt::Key_Minus, 189},       {Qt::Key_Period, 190},    {Qt::Key_Slash, 191},        {Qt::Key_QuoteLeft, 192},
    {Qt::Key_BracketLeft, 219}, {Qt::Key_Backslash, 220}, {Qt::Key_BracketRight, 221}, {Qt::Key_Apostrophe, 222}};

constexpr std::pair<int, std::uint8_t> numpadKeys[]{
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107}, {Qt::Key_Minus, 109}, {Qt::Key_Period, 110}, {Qt::Key_Slash, 111}};

template <typename Table, typename Number> std::uint32_t codeIn(const Table& table, Number number) {
    for (const auto& [known, code] : table) {
        if (known == number) {
            return code;
        }
    }
    return 0;
}

} // namespace

std::uint32_t codeOfPlace(std::uint32_t scanCode, bool extended) {
    if (extended) {
        return codeIn(extendedPlaces, scanCode);
    }
    return scanCode >= 1 && scanCode <= plain.size() ? plain[scanCode - 1] : 0;
}

std::uint32_t codeOfToolkitKey(int key, bool numpad) {
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return static_cast<std::uint32_t>(numpad ? 96 + key - Qt::Key_0 : key);
    }
    if (numpad) {
        if (const std::uint32_t code = codeIn(numpadKeys, key)) {
            return code;
        }
    }
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        return static_cast<std::uint32_t>(key);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) {
        return static_cast<std::uint32_t>(112 + key - Qt::Key_F1);
    }
    return codeIn(toolkitKeys, key);
}

} // namespace Desktop
