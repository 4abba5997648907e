#include "platform/XmlDocument.h"

#include "platform/XmlParser.h"
#include "platform/win32/WideText.h"

#include <cstdio>
#include <msxml2.h>
#include <oleauto.h>

namespace Platform {
namespace {

// Named here and not taken from the import libraries, which do not agree on which of them they hold.
constexpr CLSID domDocumentClass{0xF5078F32, 0xC551, 0x11D3, {0x89, 0xB9, 0x00, 0x00, 0xF8, 0x1F, 0xE2, 0x21}};
constexpr IID domDocumentInterface{0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// COM for the calling thread while this lives; a thread that has it already keeps what it has.
class ComScope final {
public:
    ComScope() noexcept : outcome_(CoInitialize(nullptr)) {}
    ~ComScope() {
        if (SUCCEEDED(outcome_)) {
            CoUninitialize();
        }
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

private:
    HRESULT outcome_;
};

// One reference to a COM object.
template <typename Interface> class ComPointer final {
public:
    ComPointer() = default;
    ~ComPointer() { reset(); }
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;
    ComPointer& operator=(ComPointer&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    Interface* operator->() const noexcept { return object_; }
    Interface& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    // Where a call puts the reference it hands out.
    Interface** out() noexcept {
        reset();
        return &object_;
    }
    void** outUntyped() noexcept { return reinterpret_cast<void**>(out()); }

private:
    void reset() noexcept {
        if (object_ != nullptr) {
            std::exchange(object_, nullptr)->Release();
        }
    }
    Interface* object_ = nullptr;
};

// A COM string.
class ComString final {
public:
    ComString() = default;
    explicit ComString(std::wstring_view text)
        : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    ~ComString() { SysFreeString(text_); }
    ComString(const ComString&) = delete;
    ComString& operator=(const ComString&) = delete;

    BSTR get() const noexcept { return text_; }
    BSTR* out() noexcept { return &text_; }
    std::string bytes() const { return bytesOf({text_ != nullptr ? text_ : L"", SysStringLen(text_)}); }

private:
    BSTR text_ = nullptr;
};

// The first failing call ends the reading of a tree.
struct ComFailure {
    HRESULT outcome;
};
void require(HRESULT outcome) {
    if (FAILED(outcome)) {
        throw ComFailure{outcome};
    }
}

using Node = ComPointer<IXMLDOMNode>;

std::string nameOf(IXMLDOMNode& node) {
    ComString name;
    require(node.get_nodeName(name.out()));
    return name.bytes();
}

std::string valueOf(IXMLDOMNode& node) {
    VARIANT value;
    VariantInit(&value);
    require(node.get_nodeValue(&value));
    std::string text;
    if (value.vt == VT_BSTR && value.bstrVal != nullptr) {
        text = bytesOf({value.bstrVal, SysStringLen(value.bstrVal)});
    }
    VariantClear(&value);
    return text;
}

void readAttributes(IXMLDOMNode& node, XmlElement& element) {
    ComPointer<IXMLDOMNamedNodeMap> attributes;
    if (node.get_attributes(attributes.out()) != S_OK) {
        return;
    }
    long count = 0;
    require(attributes->get_length(&count));
    for (long index = 0; index < count; ++index) {
        Node attribute;
        require(attributes->get_item(index, attribute.out()));
        element.attributes.push_back({nameOf(*attribute), valueOf(*attribute)});
    }
}

// Takes the line of each element from the front of `line`.
XmlElement elementOf(IXMLDOMNode& node, std::vector<int>::const_iterator& line) {
    XmlElement element;
    element.name = nameOf(node);
    element.line = *line++;
    readAttributes(node, element);
    Node child;
    require(node.get_firstChild(child.out()));
    while (child) {
        DOMNodeType type = NODE_INVALID;
        require(child->get_nodeType(&type));
        if (type == NODE_ELEMENT) {
            element.children.push_back(elementOf(*child, line));
        } else if (type == NODE_TEXT || type == NODE_CDATA_SECTION) {
            element.text += valueOf(*child);
        }
        Node next;
        require(child->get_nextSibling(next.out()));
        child = std::move(next);
    }
    return element;
}

std::string reasonOf(const ComPointer<IXMLDOMDocument>& document) {
    ComPointer<IXMLDOMParseError> error;
    ComString reason;
    if (document->get_parseError(error.out()) == S_OK) {
        error->get_reason(reason.out());
    }
    const std::string text = reason.bytes();
    return text.empty() ? "the system's XML parser refused it" : text;
}

} // namespace

Result<XmlElement> parseCheckedXml(const CheckedXml& xml, const std::string& name) {
    const ComScope com;
    try {
        ComPointer<IXMLDOMDocument> document;
        require(CoCreateInstance(domDocumentClass, nullptr, CLSCTX_INPROC_SERVER, domDocumentInterface,
                                 document.outUntyped()));
        require(document->put_async(VARIANT_FALSE));
        require(document->put_validateOnParse(VARIANT_FALSE));
        require(document->put_resolveExternals(VARIANT_FALSE));
        require(document->put_preserveWhiteSpace(VARIANT_TRUE));
        VARIANT_BOOL isLoaded = VARIANT_FALSE;
        require(document->loadXML(ComString(wideOf(xml.body)).get(), &isLoaded));
        if (isLoaded != VARIANT_TRUE) {
            return Fault{name, 0, reasonOf(document)};
        }
        ComPointer<IXMLDOMElement> root;
        require(document->get_documentElement(root.out()));
        auto line = xml.startLines.begin();
        return elementOf(*root, line);
    } catch (const ComFailure& failure) {
        char number[16];
        std::snprintf(number, sizeof(number), "%08lx", static_cast<unsigned long>(failure.outcome));
        return Fault{name, 0, std::string("the system's XML parser failed with error ") + number};
    }
}

} // namespace Platform
