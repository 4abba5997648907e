#include "desktop/panels/TranslationForm.h"

#include "desktop/Palette.h"
#include "desktop/models/ActionTexts.h"
#include "desktop/models/Models.h"
#include "desktop/panels/SettingsForm.h"
#include "desktop/widgets/MenuBox.h"
#include "midiinput/TranslationFactory.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <sstream>
#include <utility>

namespace Desktop {

using namespace Backend::MidiInput::TranslationManagement;
using Backend::MidiInput::MidiEvent;
using Byte = MidiTranslationCondition::Byte;

namespace {

template <typename Offer> class TranslationKinds final : public TranslationEnumerator {
public:
    explicit TranslationKinds(Offer offer) : offer_(offer) {}
    void addTranslation(std::string_view keyword, std::string_view displayName) override {
        offer_(keyword, displayName);
    }

private:
    Offer offer_;
};

std::string storedText(const Translation& translation) {
    std::ostringstream text;
    writeTranslation(text, 0, translation);
    return text.str();
}

TranslationFamily::MidiSettings* midiSettingsOf(Translation& translation) {
    return dynamic_cast<TranslationFamily::MidiSettings*>(&translation.getSettings());
}

// A translation of that kind. What it sends takes its data from the message that came in, so that it does something
// that can be heard.
std::unique_ptr<Translation> made(std::string_view keyword) {
    std::unique_ptr<Translation> translation = createDefaultTranslation(keyword);
    if (TranslationFamily::MidiSettings* const midi = translation ? midiSettingsOf(*translation) : nullptr) {
        midi->d1 = MidiTranslationValue(MidiTranslationValue::Kind::d1);
        midi->d2 = MidiTranslationValue(MidiTranslationValue::Kind::d2);
    }
    return translation;
}

} // namespace

TranslationForm::TranslationForm(Models& models, QWidget* parent)
    : ActionForm(models, tr("Translation"), tr("of the translation"), parent) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(grid(1));
    auto* const caption = new QLabel(tr("When"), this);
    caption->setObjectName("Dim");
    row->addWidget(caption);
    byte_ = makeMenu(tr("Condition of the translation"),
                     tr("Whether it is always done, or when a byte of the incoming message compares so"), this);
    operator_ = makeMenu(tr("Comparison of the condition"), tr("How the byte compares to the number"), this);
    operator_->addItems(comparisons());
    operator_->setMinimumContentsLength(1);
    value_ = new NumberField(this);
    value_->setRange(-128, 127);
    value_->describe(tr("Number of the condition"), tr("Bytes count with a sign, from -128 to 127"));
    row->addWidget(byte_, 1);
    row->addWidget(operator_);
    row->addWidget(value_);
    all().insertLayout(0, row);
    for (QComboBox* const each : {byte_, operator_}) {
        connect(each, &QComboBox::activated, this,
                [this] { this->models().edits.alone([this] { storeCondition(); }); });
    }
    value_->setFocusPolicy(Qt::StrongFocus);
    connect(value_, &NumberField::moved, this, &TranslationForm::storeCondition);
    connect(value_, &NumberField::letGo, this, [this] { this->models().edits.endOfGesture(); });
    TranslationKinds kinds(
        [this](std::string_view keyword, std::string_view displayName) { offer(keyword, displayName); });
    enumerateTranslations(kinds);
    draft_ = fresh();
    showCondition();
    showChosen(draft_->getName());
    showSettings();
}

std::unique_ptr<Translation> TranslationForm::fresh() {
    return made("Unchanged");
}

void TranslationForm::setTranslation(const Translation& translation, const MidiEvent& event) {
    if (event == event_ && storedText(translation) == storedText(*draft_)) {
        return;
    }
    event_ = event;
    const std::unique_ptr<Translation> before = std::exchange(draft_, translation.clone());
    showCondition();
    showChosen(draft_->getName());
    showSettings();
}

void TranslationForm::choose(const std::string& keyword) {
    if (draft_->getName() == keyword) {
        return;
    }
    std::unique_ptr<Translation> next = made(keyword);
    next->setCondition(draft_->getCondition());
    TranslationFamily::MidiSettings* const was = midiSettingsOf(*draft_);
    if (TranslationFamily::MidiSettings* const now = midiSettingsOf(*next); now != nullptr && was != nullptr) {
        *now = *was; // another message with the same data on the same way
    }
    const std::unique_ptr<Translation> before = std::exchange(draft_, std::move(next));
    showSettings();
    emit edited();
}

void TranslationForm::showSettings() {
    const auto type = event_.message.getMessageType();
    const auto sent = draft_->getMidiMessage({type, 0, 0, 0, -1, -1, 0, Backend::noTicks});
    build(
        draft_->getHelpId(), [this] { emit edited(); },
        [&](FormRows& rows) {
            rows.setIncoming(type);
            SettingsForm<TranslationFamily> form(rows, translationFormat().child(draft_->getName()),
                                                 sent ? sent->getMessageType() : type);
            draft_->getSettings().accept(form);
        });
}

void TranslationForm::showCondition() {
    const MidiTranslationCondition& condition = draft_->getCondition();
    const ByteNames names = incomingNames(event_.message.getMessageType());
    byte_->clear();
    byte_->addItems({tr("always"), tr("incoming %1").arg(names.d1), tr("incoming %1").arg(names.d2)});
    byte_->setCurrentIndex(static_cast<int>(condition.getByte()));
    operator_->setCurrentIndex(static_cast<int>(condition.getOperator()));
    value_->setRange(std::min(-128, condition.getValue()), std::max(127, condition.getValue()));
    value_->setValue(condition.getValue());
    operator_->setVisible(!condition.isOff());
    value_->setVisible(!condition.isOff());
}

void TranslationForm::storeCondition() {
    const auto byte = static_cast<Byte>(byte_->currentIndex());
    draft_->setCondition(
        byte == Byte::off
            ? MidiTranslationCondition()
            : MidiTranslationCondition(byte, static_cast<MidiTranslationCondition::Operator>(operator_->currentIndex()),
                                       value_->value()));
    operator_->setVisible(byte != Byte::off);
    value_->setVisible(byte != Byte::off);
    emit edited();
}

} // namespace Desktop
