#include "desktop/widgets/DrawnKeys.h"

#include "values/Key.h"

#include <initializer_list>
#include <utility>

namespace Desktop {

namespace {

// Those that the names of keys are too long for, or no letters.
constexpr std::pair<std::uint32_t, const char*> captions[]{
    {5, "Prt"},  {8, "⌫"},    {9, "⇥"},      {13, "⏎"},    {16, "⇧"},     {17, "Ctrl"}, {19, "Pau"},
    {20, "⇪"},   {27, "Esc"}, {32, "Space"}, {33, "PgU"},  {34, "PgD"},   {35, "End"},  {36, "Hom"},
    {37, "←"},   {38, "↑"},   {39, "→"},     {40, "↓"},    {45, "Ins"},   {46, "Del"},  {91, "Win"},
    {92, "Win"}, {93, "☰"},   {144, "Num"},  {145, "Scr"}, {161, "⇧"},    {164, "Alt"}, {165, "Alt"},
    {186, ";"},  {187, "="},  {188, ","},    {189, "-"},   {190, "."},    {191, "/"},   {192, "`"},
    {219, "["},  {220, "\\"}, {221, "]"},    {222, "'"},   {225, "Ctrl"}, {226, "⏎"}};

} // namespace

const std::vector<DrawnKey>& drawnKeys() {
    static const std::vector<DrawnKey> keys = [] {
        std::vector<DrawnKey> all;
        const auto row = [&all](double x, double y, std::initializer_list<std::pair<std::uint32_t, double>> list) {
            for (const auto& [code, width] : list) {
                if (code != 0) {
                    all.push_back({code, x, y, width});
                }
                x += width;
            }
        };
        row(0, 0, {{27, 1},  {0, 1},   {112, 1}, {113, 1}, {114, 1}, {115, 1}, {0, 0.5},  {116, 1}, {117, 1}, {118, 1},
                   {119, 1}, {0, 0.5}, {120, 1}, {121, 1}, {122, 1}, {123, 1}, {0, 0.25}, {5, 1},   {145, 1}, {19, 1}});
        row(0, 1.25, {{192, 1}, {'1', 1}, {'2', 1},  {'3', 1}, {'4', 1}, {'5', 1}, {'6', 1},  {'7', 1},
                      {'8', 1}, {'9', 1}, {'0', 1},  {189, 1}, {187, 1}, {8, 2},   {0, 0.25}, {45, 1},
                      {36, 1},  {33, 1},  {0, 0.25}, {144, 1}, {111, 1}, {106, 1}, {109, 1}});
        row(0, 2.25, {{9, 1.5}, {'Q', 1}, {'W', 1},  {'E', 1}, {'R', 1}, {'T', 1},   {'Y', 1},  {'U', 1},
                      {'I', 1}, {'O', 1}, {'P', 1},  {219, 1}, {221, 1}, {220, 1.5}, {0, 0.25}, {46, 1},
                      {35, 1},  {34, 1},  {0, 0.25}, {103, 1}, {104, 1}, {105, 1},   {107, 1}});
        row(0, 3.25,
            {{20, 1.75},
             {'A', 1},
             {'S', 1},
             {'D', 1},
             {'F', 1},
             {'G', 1},
             {'H', 1},
             {'J', 1},
             {'K', 1},
             {'L', 1},
             {186, 1},
             {222, 1},
             {13, 2.25},
             {0, 3.5},
             {100, 1},
             {101, 1},
             {102, 1}});
        row(0, 4.25,
            {{16, 2.25},
             {'Z', 1},
             {'X', 1},
             {'C', 1},
             {'V', 1},
             {'B', 1},
             {'N', 1},
             {'M', 1},
             {188, 1},
             {190, 1},
             {191, 1},
             {161, 2.75},
             {0, 1.25},
             {38, 1},
             {0, 1.25},
             {97, 1},
             {98, 1},
             {99, 1},
             {226, 1}});
        row(0, 5.25,
            {{17, 1.25},
             {91, 1.25},
             {164, 1.25},
             {32, 6.25},
             {165, 1.25},
             {92, 1.25},
             {93, 1.25},
             {225, 1.25},
             {0, 0.25},
             {37, 1},
             {40, 1},
             {39, 1},
             {0, 0.25},
             {96, 2},
             {110, 1}});
        return all;
    }();
    return keys;
}

QString keyCaption(std::uint32_t code) {
    for (const auto& [known, caption] : captions) {
        if (known == code) {
            return QString::fromUtf8(caption);
        }
    }
    return QString::fromStdString(Key(code).getName()).replace("Numpad ", "");
}

} // namespace Desktop
