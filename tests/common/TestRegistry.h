#pragma once

#include <QObject>
#include <QtTest>

#include <functional>
#include <vector>

// Lets several QtTest classes share one test binary per folder: each test
// file registers its class with TZ_REGISTER_TEST, and TZ_TEST_MAIN runs all.
namespace TestRegistry {

using Factory = std::function<QObject*()>;

inline std::vector<Factory>& factories()
{
    static std::vector<Factory> list;
    return list;
}

struct Registrar
{
    explicit Registrar(Factory f) { factories().push_back(std::move(f)); }
};

// Runs the registered classes. Options ("-v2") go to each; a plain argument
// names a class (run whole) or a test function ("name" or "name:tag"), run
// in the classes that have it. A name nothing has is a failure.
int runAll(int argc, char** argv);

} // namespace TestRegistry

#define TZ_REGISTER_TEST(Class) \
    static TestRegistry::Registrar Class##_registrar([] { return static_cast<QObject*>(new Class); });
