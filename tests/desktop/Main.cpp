#include "desktop/DesktopApplication.h"

#include <QByteArray>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Desktop::DesktopApplication application([] { return Desktop::HostNews{}; });
    return RUN_ALL_TESTS();
}
