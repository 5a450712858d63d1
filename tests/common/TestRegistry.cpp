#include "TestRegistry.h"

namespace TestRegistry {

int runAll(int argc, char** argv)
{
    int failures = 0;
    for (const Factory& make : factories()) {
        QObject* test = make();
        failures += QTest::qExec(test, argc, argv);
        delete test;
    }
    return failures;
}

} // namespace TestRegistry
