#include "midiinput/TranslationFactory.h"

#include "midiinput/TranslationAttributes.h"
#include "midiinput/TranslationOf.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Backend::MidiInput::TranslationManagement {

namespace {

using Platform::XmlElement;

struct Kind {
    std::string_view keyword; // empty: the line is no translation
    std::unique_ptr<Translation> (*create)(const XmlElement& element);
    ElementFormat (*format)();
};

template <std::size_t LINE>
requires(Actions::actions[LINE].translation.empty()) constexpr Kind kindOf() {
    return {};
}

template <std::size_t LINE>
requires(!Actions::actions[LINE].translation.empty()) constexpr Kind kindOf() {
    using Class = TranslationOf<LINE>;
    return {Class::ACTION.translation,
            [](const XmlElement& element) -> std::unique_ptr<Translation> { return std::make_unique<Class>(element); },
            [] {
                ElementFormat format;
                format.name = Class::ACTION.translation;
                format.meaning = Class::ACTION.displayName;
                format.attributes = Class::Form::attributes(std::get<Class::ACTION.call.index()>(Class::ACTION.call));
                Actions::namePresetFolder(Class::ACTION, format.attributes);
                return format;
            }};
}

template <std::size_t... LINES> constexpr auto kindsOf(std::index_sequence<LINES...>) {
    return std::array{kindOf<LINES>()...};
}

constexpr auto kinds = kindsOf(std::make_index_sequence<Actions::actions.size()>());

std::unique_ptr<Translation> create(std::string_view keyword, const XmlElement& element) {
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) { return kind.keyword == keyword; });
    return keyword.empty() || found == kinds.end() ? nullptr : found->create(element);
}

} // namespace

std::unique_ptr<Translation> createTranslation(const XmlElement& element) {
    if (element.children.empty()) {
        return nullptr;
    }
    std::unique_ptr<Translation> translation = create(element.children.front().name, element.children.front());
    const std::string* condition = element.attribute("condition");
    if (translation && condition != nullptr) {
        translation->setCondition(MidiTranslationCondition(std::string_view(*condition)));
    }
    return translation;
}

std::unique_ptr<Translation> createDefaultTranslation(std::string_view keyword) {
    return create(keyword, XmlElement{});
}

Platform::Result<std::unique_ptr<Translation>> readTranslation(const std::string& xml) {
    const std::string source = "translation";
    const Platform::Result<XmlElement> element = Platform::parseXml(xml, source);
    if (!element) {
        return element.fault();
    }
    const auto fault = [&](const XmlElement& wrong) {
        return Platform::Fault{source, wrong.line, "there is no translation <" + wrong.name + ">"};
    };
    if (element.value().name != translationFormat().name) {
        return fault(element.value());
    }
    std::unique_ptr<Translation> translation = createTranslation(element.value());
    if (!translation) {
        return fault(element.value().children.empty() ? element.value() : element.value().children.front());
    }
    return translation;
}

void enumerateTranslations(TranslationEnumerator& enumerator) {
    for (const Actions::Action& action : Actions::actions) {
        if (!action.translation.empty()) {
            enumerator.addTranslation(action.translation, action.displayName);
        }
    }
}

const ElementFormat& translationFormat() {
    static const ElementFormat format = [] {
        ElementFormat translation;
        translation.name = "Translation";
        translation.meaning = "One thing that the message does.";
        translation.attributes = {conditionAttribute()};
        for (const Kind& kind : kinds) {
            if (!kind.keyword.empty()) {
                translation.children.push_back(kind.format());
            }
        }
        return translation;
    }();
    return format;
}

void writeTranslation(std::ostream& out, int depth, const Translation& translation) {
    XmlWriter xml(out, depth);
    xml.begin("Translation").attribute("condition", translation.getCondition()).content();
    translation.writeXml(out, depth + 1);
    xml.end();
}

} // namespace Backend::MidiInput::TranslationManagement
