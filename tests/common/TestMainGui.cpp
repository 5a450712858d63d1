#include "TestRegistry.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    return TestRegistry::runAll(argc, argv);
}
