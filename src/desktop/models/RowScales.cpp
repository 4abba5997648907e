#include "desktop/models/RowScales.h"

#include "input/FunctionFactory.h"
#include "platform/XmlDocument.h"
#include "values/Note.h"

#include <QObject>
#include <algorithm>
#include <sstream>

namespace Desktop {

using Backend::ComputerInput::KeyConfiguration;

namespace {

struct Scale {
    const char* name;
    std::vector<int> steps; // semitones from the root, within an octave
};

const std::vector<Scale>& scales() {
    static const std::vector<Scale> all{{"chromatic", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}},
                                        {"major", {0, 2, 4, 5, 7, 9, 11}},
                                        {"minor", {0, 2, 3, 5, 7, 8, 10}},
                                        {"harmonic minor", {0, 2, 3, 5, 7, 8, 11}},
                                        {"major pentatonic", {0, 2, 4, 7, 9}},
                                        {"minor pentatonic", {0, 3, 5, 7, 10}},
                                        {"blues", {0, 3, 5, 6, 7, 10}},
                                        {"whole tone", {0, 2, 4, 6, 8, 10}}};
    return all;
}

} // namespace

QStringList scaleNames() {
    QStringList names;
    for (const Scale& scale : scales()) {
        names << QObject::tr(scale.name);
    }
    return names;
}

std::vector<std::uint32_t> keysOfRowFrom(std::uint32_t code) {
    static const std::vector<std::vector<std::uint32_t>> rows{
        {192, '1', '2', '3', '4', '5', '6', '7', '8', '9', '0', 189, 187},
        {'Q', 'W', 'E', 'R', 'T', 'Y', 'U', 'I', 'O', 'P', 219, 221, 220},
        {'A', 'S', 'D', 'F', 'G', 'H', 'J', 'K', 'L', 186, 222},
        {'Z', 'X', 'C', 'V', 'B', 'N', 'M', 188, 190, 191}};
    for (const auto& row : rows) {
        if (const auto found = std::find(row.begin(), row.end(), code); found != row.end()) {
            return {found, row.end()};
        }
    }
    return {};
}

std::vector<KeyConfiguration> scaleOnRow(std::uint32_t code, std::size_t scale,
                                         const std::optional<KeysModel::KeyNote>& first, Backend::QelIF& qel) {
    constexpr int c4 = 60;
    const int root = first ? first->note : c4;
    const std::vector<int>& steps = scales()[scale].steps;
    const int size = static_cast<int>(steps.size());
    std::vector<KeyConfiguration> row;
    int place = 0;
    for (const std::uint32_t each : keysOfRowFrom(code)) {
        const int number = root + place / size * 12 + steps[static_cast<std::size_t>(place % size)];
        ++place;
        if (number > 127) {
            break;
        }
        const auto make = [&](const char* keyword) {
            std::ostringstream text;
            text << '<' << keyword << " note=\"" << Note(number).getName() << "\" velocity=\"100\"";
            if (first && first->zone >= 0) {
                text << " zone=\"" << first->zone << '"';
            }
            text << "/>";
            const auto element = Platform::parseXml(text.str(), "scale");
            return element ? Backend::FunctionManagement::createFunction(element.value(), qel) : nullptr;
        };
        row.push_back({Key(each), {{false, make("MidiNoteOn"), make("MidiNoteOff")}}, true});
    }
    return row;
}

} // namespace Desktop
