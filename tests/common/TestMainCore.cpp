#include "TestRegistry.h"

#include <QGuiApplication>

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    return TestRegistry::runAll(argc, argv);
}
