// The main of test programs that use Qt.
#include <QApplication>

#include <gtest/gtest.h>

int main(int count, char** words)
{
    // CTest asks for the list of tests where there may be no platform to draw on.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&count, words);
    const QApplication application(count, words);
    return RUN_ALL_TESTS();
}
