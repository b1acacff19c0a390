#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
