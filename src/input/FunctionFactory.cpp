#include "input/FunctionFactory.h"

#include "input/FunctionOf.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Backend::FunctionManagement {

namespace {

struct Kind {
    std::string_view keyword; // empty: the line is no function
    std::unique_ptr<Function> (*create)(const Platform::XmlElement& element, QelIF& qel);
    ElementFormat (*format)();
};

template <std::size_t LINE>
requires(!Actions::actions[LINE].function.empty()) constexpr Kind kindOf() {
    using Class = FunctionOf<LINE>;
    return {Class::ACTION.function,
            [](const Platform::XmlElement& element, QelIF& qel) -> std::unique_ptr<Function> {
                return std::make_unique<Class>(element, qel);
            },
            [] {
                ElementFormat format;
                format.name = Class::ACTION.function;
                format.meaning = Class::ACTION.displayName;
                format.attributes = Class::Form::attributes(std::get<Class::ACTION.call.index()>(Class::ACTION.call));
                Actions::namePresetFolder(Class::ACTION, format.attributes);
                return format;
            }};
}

template <std::size_t LINE>
requires(Actions::actions[LINE].function.empty()) constexpr Kind kindOf() {
    return {};
}

template <std::size_t... LINES> constexpr auto kindsOf(std::index_sequence<LINES...>) {
    return std::array{kindOf<LINES>()...};
}

constexpr auto kinds = kindsOf(std::make_index_sequence<Actions::actions.size()>());

const Kind* findKind(std::string_view keyword) {
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) { return kind.keyword == keyword; });
    return keyword.empty() || found == kinds.end() ? nullptr : &*found;
}

} // namespace

std::unique_ptr<Function> createFunction(const Platform::XmlElement& element, QelIF& qel) {
    const Kind* kind = findKind(element.name);
    return kind != nullptr ? kind->create(element, qel) : nullptr;
}

std::unique_ptr<Function> createDefaultFunction(std::string_view keyword, QelIF& qel) {
    const Kind* kind = findKind(keyword);
    return kind != nullptr ? kind->create(Platform::XmlElement{}, qel) : nullptr;
}

Platform::Outcome executeFunction(const std::string& xml, QelIF& qel) {
    const std::string source = "function";
    const Platform::Result<Platform::XmlElement> element = Platform::parseXml(xml, source);
    if (!element) {
        return element.fault();
    }
    const std::unique_ptr<Function> function = createFunction(element.value(), qel);
    if (!function) {
        return Platform::Fault{source, element.value().line, "there is no function <" + element.value().name + ">"};
    }
    function->execute();
    return Platform::success();
}

void enumerateFunctions(FunctionEnumerator& enumerator) {
    for (const Actions::Action& action : Actions::actions) {
        if (!action.function.empty() && !action.displayName.empty()) {
            enumerator.addFunction(action.function, action.displayName);
        }
    }
}

const std::vector<ElementFormat>& functionFormats() {
    static const std::vector<ElementFormat> formats = [] {
        std::vector<ElementFormat> all;
        for (const Kind& kind : kinds) {
            if (!kind.keyword.empty()) {
                all.push_back(kind.format());
            }
        }
        return all;
    }();
    return formats;
}

} // namespace Backend::FunctionManagement
