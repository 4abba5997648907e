#include "desktop/panels/KeysPanel.h"

#include "core/QelIF.h"
#include "core/QelMessageManager.h"
#include "desktop/Palette.h"
#include "desktop/Reach.h"
#include "desktop/models/Models.h"
#include "desktop/models/NumberTexts.h"
#include "desktop/models/RowScales.h"
#include "desktop/panels/EntriesEditor.h"
#include "desktop/widgets/ComputerKeyboard.h"
#include "desktop/widgets/ElidedLabel.h"
#include "input/ComputerInputMessageManager.h"

#include <QInputDialog>
#include <QMenu>
#include <QPushButton>

namespace Desktop {

using namespace Backend::ComputerInput;

namespace {

bool byCode(const Key& a, const Key& b) {
    return std::pair(a.getCode(), a.getModifiers()) < std::pair(b.getCode(), b.getModifiers());
}

} // namespace

KeysPanel::KeysPanel(Models& models, QWidget* parent)
    : PanelFrame(Gui::Panel::computerInput, tr("Computer keys"),
                 tr("Press a key to play it; double-click one to say what it does"), models, parent) {
    keyboard_ = new ComputerKeyboard(this);
    keyboard_->describe(tr("Computer keyboard"), tr("Double-click a key, or press Enter, to edit what it does"));
    body().addWidget(keyboard_, 1);
    line_ = new ElidedLabel(this);
    line_->setObjectName("Dim");
    body().addWidget(line_);

    makeEditor();
    QToolButton* const edit =
        makeButton("✎", tr("Edit the keys"), tr("Opens and closes the editor of the chosen key"), this);
    edit->setCheckable(true);
    connect(edit, &QToolButton::toggled, this, [this](bool on) {
        editor_->setVisible(on);
        showKey();
    });
    addHeadWidget(edit);
    QToolButton* const more =
        makeButton("⋮", tr("Menu of the key"), tr("Copies, clears, gives a scale to its row"), this);
    connect(more, &QToolButton::clicked, this,
            [this, more] { keyMenu(keyboard_->selected(), more->mapToGlobal(more->rect().bottomLeft())); });
    addHeadWidget(more);
    connect(keyboard_, &ComputerKeyboard::chosen, this, &KeysPanel::showOther);
    connect(keyboard_, &ComputerKeyboard::activated, this, [this, edit](std::uint32_t) {
        edit->setChecked(true);
        showOther();
        entries_->takeFocus();
    });
    connect(keyboard_, &ComputerKeyboard::menuAsked, this, &KeysPanel::keyMenu);
    connect(&models.keys, &Model::changed, this, &KeysPanel::refresh);
    connect(&models.zones, &Model::changed, this, &KeysPanel::refresh);
    connect(&models.keys, &KeysModel::keyMoved, keyboard_, [this](std::uint32_t code, bool down) {
        keyboard_->setDown(code, down);
        if (down && keyboard_->selected() != code) {
            keyboard_->select(code);
            showOther();
        }
    });
    for (const auto& [code, text] : keyLegends()) {
        legends_[code] = QString::fromStdString(text);
    }
    setPresets({"Computer Input Presets", [this] { return this->models().keys.map().presetName; },
                [this](const std::string& name) { this->models().keys.loadPreset(name); },
                [this](const std::string& name) {
                    this->models().qel().getComputerInputMessageManager().postSavePreset(name, {});
                },
                [this](const std::string& name) {
                    this->models().qel().getComputerInputMessageManager().postDeletePreset(name);
                },
                [this] {
                    std::vector<PresetElement> elements;
                    for (const Key& each : idsOf(this->models().keys.map(), byCode)) {
                        elements.push_back(
                            {QString::fromStdString(each.getName()) + "   " + this->models().keys.longText(each),
                             each == key()});
                    }
                    return elements;
                },
                [this](const std::string& name, const std::vector<int>& places) {
                    this->models().qel().getComputerInputMessageManager().postSavePreset(
                        name, idsAt(this->models().keys.map(), places, byCode));
                }});
    refresh();
}

void KeysPanel::makeEditor() {
    editor_ = new QWidget(this);
    auto* const columns = new QHBoxLayout(editor_);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(grid(3));
    entries_ = new EntriesEditor(models(), tr("key"), editor_);
    connect(entries_, &EntriesEditor::edited, this, &KeysPanel::store);
    columns->addWidget(entries_, 1);
    auto* const options = new QVBoxLayout;
    const auto check = [&](const QString& text, const QString& help) {
        auto* const box = new QCheckBox(text, editor_);
        box->setAccessibleName(text);
        box->setStatusTip(help);
        options->addWidget(box);
        return box;
    };
    global_ = check(tr("global"), tr("Plays also while another program has the keyboard, when global keys are on"));
    connect(global_, &QCheckBox::clicked, this, [this] { models().edits.alone([this] { store(); }); });
    shift_ = check(tr("with Shift"), tr("Edits what the key does together with Shift"));
    control_ = check(tr("with Control"), tr("Edits what the key does together with Control"));
    alt_ = check(tr("with Alt"), tr("Edits what the key does together with Alt"));
    for (QCheckBox* const each : {shift_, control_, alt_}) {
        connect(each, &QCheckBox::clicked, this, &KeysPanel::showOther);
    }
    useKeyUpMod_ = check(tr("modifiers count at release"),
                         tr("Of all keys: what a key does coming up goes by the modifiers that are held then"));
    connect(useKeyUpMod_, &QCheckBox::clicked, this, [this](bool on) { models().keys.setUseKeyUpMod(on); });
    auto* const tryOut = new QPushButton(tr("try it"), editor_);
    tryOut->setAccessibleName(tr("Try the key"));
    tryOut->setStatusTip(tr("Does what the key does, for as long as it is held"));
    tryOut->setFocusPolicy(Qt::TabFocus);
    connect(tryOut, &QPushButton::pressed, this, [this] { models().backend().postKeyDown(key(), false); });
    connect(tryOut, &QPushButton::released, this, [this] { models().backend().postKeyUp(key()); });
    options->addWidget(tryOut);
    options->addStretch(1);
    columns->addLayout(options);
    editor_->hide();
    body().addWidget(editor_);
}

Key KeysPanel::key() const {
    return Key(keyboard_->selected(), (shift_->isChecked() ? Key::SHIFT : 0U) |
                                          (control_->isChecked() ? Key::CONTROL : 0U) |
                                          (alt_->isChecked() ? Key::ALT : 0U));
}

void KeysPanel::setLegend(std::uint32_t code, const QString& text) {
    if (legends_[code] != text) {
        legends_[code] = text;
        refresh();
    }
}

void KeysPanel::refreshDown() {
    keyboard_->clearDown();
}

void KeysPanel::edit(std::uint32_t code) {
    keyboard_->select(code);
    emit keyboard_->activated(code);
}

void KeysPanel::refresh() {
    std::map<std::uint32_t, ComputerKeyboard::Face> faces;
    for (const std::uint32_t code : ComputerKeyboard::codes()) {
        const Key plain(code);
        ComputerKeyboard::Face face;
        face.legend = legends_[code];
        face.action = models().keys.shortText(plain);
        face.help = models().keys.longText(plain);
        if (const auto note = models().keys.noteOf(plain)) {
            face.colour = Desktop::palette().inTurn(std::max(0, note->zone));
            const int sounds = note->note + models().zones.transposeOf(note->zone);
            if (sounds != note->note) {
                face.help += tr("   sounds %1").arg(noteText(std::clamp(sounds, 0, 127)));
            }
        } else if (!face.action.isEmpty()) {
            face.colour = Desktop::palette().amber;
        }
        faces[code] = face;
    }
    keyboard_->setFaces(std::move(faces));
    showPresetName();
    showKey();
}

void KeysPanel::showKey() {
    const Key now = key();
    const QString text = models().keys.longText(now);
    line_->setText(QString::fromStdString(now.getName()) + "   " + (text.isEmpty() ? tr("does nothing") : text));
    const KeyConfiguration* const found = models().keys.find(now);
    if (!editor_->isVisibleTo(this)) { // its forms are made anew for each key
        return;
    }
    entries_->setEntries(found != nullptr ? found->entries : std::vector<FunctionEntry>{});
    global_->setChecked(found == nullptr || found->global);
    useKeyUpMod_->setChecked(models().keys.map().useKeyUpMod);
}

void KeysPanel::showOther() {
    entries_->startOver();
    showKey();
}

void KeysPanel::store() {
    const Key now = key();
    const KeyConfiguration* const found = models().keys.find(now);
    KeyConfiguration after = found != nullptr ? *found : KeyConfiguration{now};
    after.entries = entries_->entries();
    after.global = global_->isChecked();
    models().keys.put(tr("edit the key %1").arg(QString::fromStdString(now.getName())), {after}, true);
}

void KeysPanel::keyMenu(std::uint32_t code, const QPoint& where) {
    QMenu menu(this);
    menu.addAction(tr("Edit"), this, [this, code] { emit keyboard_->activated(code); });
    menu.addAction(tr("Copy"), this, [this] {
        if (const KeyConfiguration* const found = models().keys.find(key())) {
            copied_ = *found;
        }
    });
    QAction* const paste = menu.addAction(tr("Paste"), this, [this] {
        KeyConfiguration pasted = *copied_;
        pasted.key = key();
        models().keys.put(tr("paste a key"), {pasted});
    });
    paste->setEnabled(copied_.has_value());
    menu.addAction(tr("Clear"), this, [this] { models().keys.clear(key()); });
    QAction* const scale = menu.addAction(tr("Scale on the row from here…"), this, [this, code] { assignScale(code); });
    scale->setEnabled(!keysOfRowFrom(code).empty());
    menu.exec(where);
}

void KeysPanel::assignScale(std::uint32_t code) {
    bool accepted = false;
    const QStringList names = scaleNames();
    const QString chosen = QInputDialog::getItem(this, tr("A scale on the row"),
                                                 tr("From this key to the right, starting with its note (or C4):"),
                                                 names, 1, false, &accepted);
    if (accepted) {
        models().keys.put(tr("a scale on a row"), scaleOnRow(code, static_cast<std::size_t>(names.indexOf(chosen)),
                                                             models().keys.noteOf(Key(code)), models().qel()));
    }
}

} // namespace Desktop
