// wren-desktop: the editor that a person sits at.
#include <QApplication>

int main(int count, char** words)
{
    QApplication application(count, words);
    return 0;
}
