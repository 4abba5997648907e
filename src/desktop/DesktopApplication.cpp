#include "desktop/DesktopApplication.h"

#include "desktop/DesktopGui.h"
#include "desktop/Palette.h"
#include "desktop/Reach.h"
#include "desktop/widgets/Instrument.h"
#include "gui/QelGuiFactory.h"

#include <QApplication>
#include <QFontDatabase>
#include <QStyleFactory>
#include <QTimer>
#include <utility>

namespace Desktop {

namespace {

constexpr int lookMilliseconds = 100;

void useFont() {
    QFont font = QApplication::font();
    if (QFontDatabase::families().contains("Inter")) {
        font.setFamily("Inter");
    }
    font.setPixelSize(12);
    QApplication::setFont(font);
}

} // namespace

struct DesktopApplication::Toolkit {
    int argumentCount = 1;
    char name[8] = "tembrel";
    char* arguments[2] = {name, nullptr};
    QApplication application{argumentCount, arguments};
    std::function<HostNews()> look;
};

bool hasDisplay() {
    return canOpenWindows();
}

DesktopApplication::DesktopApplication(std::function<HostNews()> look) {
    toolkit_ = std::make_unique<Toolkit>();
    toolkit_->look = std::move(look);
    QApplication::setApplicationName("Tembrel");
    QApplication::setDesktopFileName("tembrel");
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    useFont();
    usePalette("Dark");
    installAccessibility();
    Gui::QelGuiFactory::setBuilder(
        [](Backend::QelIF& backend, const Backend::RegistrySettings& settings,
           const std::vector<Backend::MidiInputPort>& inputs, const std::vector<Backend::MidiOutputPort>& outputs,
           const Gui::SequencePresetList& sequences,
           bool) { return std::make_unique<DesktopGui>(backend, settings, inputs, outputs, sequences); });
}

DesktopApplication::~DesktopApplication() {
    Gui::QelGuiFactory::setBuilder({});
}

void DesktopApplication::run(Gui::QelGuiIF& gui) {
    hideOwnConsole();
    auto& desktop = dynamic_cast<DesktopGui&>(gui); // ours: the builder is
    desktop.initialize();
    desktop.create(nullptr);
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [this, &desktop] {
        const HostNews news = toolkit_->look();
        desktop.window().showNews(news);
        if (news.end) {
            QApplication::quit();
        }
    });
    timer.start(lookMilliseconds);
    QObject::connect(&desktop.window(), &MainWindow::closing, &toolkit_->application, &QApplication::quit);
    QApplication::exec();
    desktop.destroy();
}

} // namespace Desktop
