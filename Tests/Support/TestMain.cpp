// Runs the tests inside a Qt application on the offscreen platform, so that dialogs open real
// windows without a display.

#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen") : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    // Tests type numbers as "640.5": read them the same way whatever the machine's locale.
    QLocale::setDefault(QLocale::c());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
