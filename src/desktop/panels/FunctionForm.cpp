#include "desktop/panels/FunctionForm.h"

#include "desktop/Palette.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/Models.h"
#include "desktop/widgets/NumberField.h"
#include "input/FunctionFactory.h"
#include "input/FunctionSettingsTypes.h"
#include "input/HelpTexts.h"
#include "values/ControllerNames.h"
#include "values/Note.h"

#include <QCompleter>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace Desktop {

using namespace Backend::FunctionManagement;
using Backend::MidiEngine::MessageType;

// Makes the fields of a settings type. What a field changes it changes in the settings of a new copy of the function,
// found again there by their type.
class FormBuilder final : public FunctionSettingsVisitor {
public:
    FormBuilder(FunctionForm& form, QFormLayout& layout, QWidget& fields, MessageType type)
        : form_(form), layout_(layout), fields_(fields), type_(type) {}

    void visit(NoFunctionSettingsType&) override {}
    void visit(ActionSettingsType&) override {}
    void visit(OnOffToggleSettingsType& settings) override {
        add(QObject::tr("State"), settings, &OnOffToggleSettingsType::type);
    }
    void visit(SelectSettingsType& settings) override {
        add(QObject::tr("Which"), settings, &SelectSettingsType::type);
        add(QObject::tr("Value"), settings, &SelectSettingsType::value);
    }
    void visit(ChangeBooleanSettingsType& settings) override {
        add(QObject::tr("Which"), settings, &ChangeBooleanSettingsType::type);
        add(QObject::tr("State"), settings, &ChangeBooleanSettingsType::value);
    }
    void visit(ChangeNoteToggleSettingsType& settings) override {
        add(QObject::tr("Which"), settings, &ChangeNoteToggleSettingsType::type);
        add(QObject::tr("Mode"), settings, &ChangeNoteToggleSettingsType::value);
    }
    void visit(SelectControlSettingsType& settings) override {
        add(QObject::tr("Which"), settings, &SelectControlSettingsType::type);
        add(QObject::tr("Value"), settings, &SelectControlSettingsType::value);
    }
    void visit(LoadPresetSettingsType& settings) override {
        add(QObject::tr("Preset"), settings, &LoadPresetSettingsType::preset);
    }
    void visit(MoveWindowSettingsType& settings) override {
        add(QObject::tr("To the right"), settings, &MoveWindowSettingsType::x);
        add(QObject::tr("Downward"), settings, &MoveWindowSettingsType::y);
    }
    void visit(MidiSettingsType& settings) override {
        const auto note = [](int value) { return QString::fromStdString(Note(value).getName()); };
        const auto d1 = [](MidiSettingsType& s, int v) { s.d1 = static_cast<std::uint8_t>(v); };
        const auto d2 = [](MidiSettingsType& s, int v) { s.d2 = static_cast<std::uint8_t>(v); };
        const auto both = [](MidiSettingsType& s, int v) { s.setValue14(v); };
        switch (type_) {
        case MessageType::noteOn:
        case MessageType::noteOff:
            number(QObject::tr("Note"), 0, 127, settings.d1, d1, note);
            number(QObject::tr("Velocity"), 0, 127, settings.d2, d2);
            break;
        case MessageType::keyPressure:
            number(QObject::tr("Key"), 0, 127, settings.d1, d1, note);
            number(QObject::tr("Pressure"), 0, 127, settings.d2, d2);
            break;
        case MessageType::controllerChange:
            number(QObject::tr("Controller"), 0, 127, settings.d1, d1, [](int value) {
                return QString::number(value) + " " +
                       QString::fromStdString(Backend::MidiEngine::controllerName(value));
            });
            number(QObject::tr("Value"), 0, 127, settings.d2, d2);
            break;
        case MessageType::programChange:
            number(QObject::tr("Program"), 0, 127, settings.d1, d1);
            break;
        case MessageType::channelPressure:
            number(QObject::tr("Pressure"), 0, 127, settings.d1, d1);
            break;
        case MessageType::songSelect:
        case MessageType::unofficialBusSelect:
            number(QObject::tr("Number"), 0, 127, settings.d1, d1);
            break;
        case MessageType::pitchBend:
        case MessageType::songPosition:
            number(QObject::tr("Value"), 0, 16383, settings.getValue14(), both);
            break;
        default:
            break;
        }
        const auto orDefault = [](const QString& standard) {
            return [standard](int value) { return value == 0 ? standard : QString::number(value); };
        };
        number(
            QObject::tr("Zone"), 0, 16, settings.zone == MidiSettingsType::NOT_SET ? 0 : settings.zone + 1,
            [](MidiSettingsType& s, int v) {
                s.zone = v == 0 ? MidiSettingsType::NOT_SET : static_cast<std::uint8_t>(v - 1);
            },
            orDefault(QObject::tr("none")));
        number(
            QObject::tr("Output"), 0, 64, settings.output == MidiSettingsType::NOT_SET ? 0 : settings.output + 1,
            [](MidiSettingsType& s, int v) {
                s.output = v == 0 ? MidiSettingsType::NOT_SET : static_cast<std::uint8_t>(v - 1);
            },
            orDefault(QObject::tr("default")));
        if (static_cast<int>(type_) < 0xF0) {
            number(
                QObject::tr("Channel"), 0, 16, settings.channel + 1,
                [](MidiSettingsType& s, int v) { s.channel = static_cast<std::int8_t>(v - 1); },
                orDefault(QObject::tr("of the layer")));
        }
    }

private:
    // Gives the settings of the wanted type of a function to `work`.
    template <typename Settings> struct Find final : FunctionSettingsVisitor {
        std::function<void(Settings&)> work;
        template <typename Other> void see(Other& other) {
            if constexpr (std::is_same_v<Other, Settings>) {
                work(other);
            }
        }
        void visit(NoFunctionSettingsType& s) override { see(s); }
        void visit(ActionSettingsType& s) override { see(s); }
        void visit(OnOffToggleSettingsType& s) override { see(s); }
        void visit(MidiSettingsType& s) override { see(s); }
        void visit(SelectSettingsType& s) override { see(s); }
        void visit(ChangeBooleanSettingsType& s) override { see(s); }
        void visit(ChangeNoteToggleSettingsType& s) override { see(s); }
        void visit(SelectControlSettingsType& s) override { see(s); }
        void visit(LoadPresetSettingsType& s) override { see(s); }
        void visit(MoveWindowSettingsType& s) override { see(s); }
    };
    template <typename Settings> std::function<void(std::function<void(Settings&)>)> changer() {
        return [form = &form_](std::function<void(Settings&)> work) {
            form->change([&](Function& function) {
                Find<Settings> find;
                find.work = work;
                function.getSettings().accept(find);
            });
        };
    }
    void row(const QString& name, QWidget* widget) {
        widget->setAccessibleName(name + " " + form_.role_);
        widget->setFocusPolicy(Qt::StrongFocus);
        auto* const label = new QLabel(name, &fields_);
        label->setObjectName("Dim");
        layout_.addRow(label, widget);
    }
    void number(const QString& name, int min, int max, int value, std::function<void(MidiSettingsType&, int)> set,
                std::function<QString(int)> text = {}) {
        auto* const field = new NumberField(&fields_);
        field->setRange(min, max);
        field->setValue(value);
        if (text) {
            field->setText(std::move(text));
        }
        QObject::connect(field, &NumberField::moved, field, [change = changer<MidiSettingsType>(), set](int now) {
            change([&](MidiSettingsType& settings) { set(settings, now); });
        });
        row(name, field);
    }
    template <typename Settings>
    void choice(const QString& name, const QStringList& items, int current, std::function<void(Settings&, int)> set) {
        auto* const box = new QComboBox(&fields_);
        box->addItems(items);
        box->setCurrentIndex(current);
        QObject::connect(box, &QComboBox::activated, box, [change = changer<Settings>(), set](int index) {
            change([&](Settings& settings) { set(settings, index); });
        });
        row(name, box);
    }
    template <typename Settings> void add(const QString& name, Settings& settings, OnOffToggle Settings::*member) {
        choice<Settings>(name, {QObject::tr("on"), QObject::tr("off"), QObject::tr("the other way")},
                         static_cast<int>((settings.*member).getState()),
                         [member](Settings& s, int i) { s.*member = OnOffToggle(static_cast<OnOffToggle::State>(i)); });
    }
    template <typename Settings> void add(const QString& name, Settings& settings, NoteToggle Settings::*member) {
        choice<Settings>(name,
                         {QObject::tr("off"), QObject::tr("type 1: the second press ends"),
                          QObject::tr("type 2: the second press strikes again")},
                         static_cast<int>((settings.*member).getState()),
                         [member](Settings& s, int i) { s.*member = NoteToggle(static_cast<NoteToggle::State>(i)); });
    }
    // Values with a text of their own are typed; words may be chosen.
    template <typename Settings, typename Value>
    void typed(const QString& name, Settings& settings, Value Settings::*member, const QStringList& words,
               const QString& hint) {
        auto* const box = new QComboBox(&fields_);
        box->setEditable(true);
        box->addItems(words);
        box->setCurrentText(QString::fromStdString((settings.*member).toXmlString()));
        box->lineEdit()->setPlaceholderText(hint);
        box->lineEdit()->setAccessibleName(name + " " + form_.role_);
        QObject::connect(box, &QComboBox::currentTextChanged, box,
                         [change = changer<Settings>(), member](const QString& text) {
                             const std::string utf8 = text.toStdString();
                             change([&](Settings& s) { s.*member = Value(std::string_view(utf8)); });
                         });
        row(name, box);
    }
    template <typename Settings> void add(const QString& name, Settings& settings, SelectType Settings::*member) {
        typed(name, settings, member, {"selected", "up", "down", "all", "0", "1", "2", "3"},
              QObject::tr("or a number from 0"));
    }
    template <typename Settings>
    void add(const QString& name, Settings& settings, SelectControlType Settings::*member) {
        typed(name, settings, member, {"selected", "up", "down", "left", "right", "all"}, QObject::tr("or row,column"));
    }
    template <typename Settings>
    void add(const QString& name, Settings& settings, RelativeFixedValue Settings::*member) {
        typed(name, settings, member, {"", "+1", "-1", "+12", "-12"}, QObject::tr("no change; +1 steps, 1 sets"));
    }
    template <typename Settings> void add(const QString& name, Settings& settings, std::string Settings::*member) {
        auto* const line = new QLineEdit(QString::fromStdString(settings.*member), &fields_);
        QObject::connect(line, &QLineEdit::textEdited, line,
                         [change = changer<Settings>(), member](const QString& text) {
                             change([&](Settings& s) { s.*member = text.toStdString(); });
                         });
        row(name, line);
    }

    FunctionForm& form_;
    QFormLayout& layout_;
    QWidget& fields_;
    MessageType type_;
};

namespace {

class ListFiller final : public FunctionEnumerator {
public:
    explicit ListFiller(QComboBox& box) : box_(box) {}
    void addFunction(std::string_view keyword, std::string_view displayName) override {
        box_.addItem(QString::fromUtf8(displayName.data(), static_cast<qsizetype>(displayName.size())),
                     QString::fromUtf8(keyword.data(), static_cast<qsizetype>(keyword.size())));
    }

private:
    QComboBox& box_;
};

} // namespace

FunctionForm::FunctionForm(Models& models, const QString& role, QWidget* parent)
    : QWidget(parent), models_(models), role_(role) {
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(grid(1));
    kind_ = new QComboBox(this);
    kind_->setEditable(true); // so that one can search by typing
    kind_->setInsertPolicy(QComboBox::NoInsert);
    ListFiller filler(*kind_);
    enumerateFunctions(filler);
    kind_->completer()->setCompletionMode(QCompleter::PopupCompletion);
    kind_->completer()->setFilterMode(Qt::MatchContains);
    kind_->setAccessibleName(tr("Function %1").arg(role));
    kind_->lineEdit()->setAccessibleName(tr("Function %1").arg(role));
    kind_->setStatusTip(tr("What happens; type to search"));
    connect(kind_, &QComboBox::activated, this, &FunctionForm::choose);
    all->addWidget(kind_);
    build();
}

void FunctionForm::setFunction(const std::shared_ptr<const Function>& function) {
    if (function == function_) {
        return;
    }
    function_ = function;
    const QString keyword = QString::fromStdString(function ? function->getName() : "NoFunction");
    kind_->setCurrentIndex(kind_->findData(keyword));
    build();
}

void FunctionForm::choose(int index) {
    const std::string keyword = kind_->itemData(index).toString().toStdString();
    if (function_ && function_->getName() == keyword) {
        return;
    }
    if (keyword == "NoFunction") {
        function_.reset();
    } else {
        function_ = createDefaultFunction(keyword, models_.qel());
    }
    build();
    emit edited();
}

void FunctionForm::build() {
    delete fields_;
    fields_ = new QWidget(this);
    auto* const layout = new QFormLayout(fields_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(grid(1));
    if (function_) {
        const std::unique_ptr<Function> copy = function_->clone();
        FormBuilder builder(*this, *layout, *fields_, copy->getMidiEvent().type);
        copy->getSettings().accept(builder);
        const std::string_view help = Backend::helpText(function_->getHelpId());
        fields_->setStatusTip(QString::fromUtf8(help.data(), static_cast<qsizetype>(help.size())));
        kind_->setStatusTip(fields_->statusTip());
    }
    static_cast<QVBoxLayout*>(this->layout())->addWidget(fields_);
    fields_->show();
}

void FunctionForm::change(const std::function<void(Function&)>& work) {
    if (!function_) {
        return;
    }
    std::unique_ptr<Function> copy = function_->clone();
    work(*copy);
    function_ = std::move(copy);
    emit edited();
}

} // namespace Desktop
