#include "TestRegistry.h"

#include <QByteArray>
#include <QMetaMethod>

#include <cstdio>
#include <cstring>
#include <memory>

namespace TestRegistry {

namespace {

// QtTest options that take the next argument as their value.
bool takesValue(const char* option)
{
    static const char* const withValue[] = {"-o", "-maxwarnings", "-eventdelay", "-keydelay", "-mousedelay",
                                            "-seed", "-platform", "-iterations", "-median", "-minimumvalue",
                                            "-minimumtotal", "-callgrind", "-perfcounter"};
    for (const char* name : withValue) {
        if (std::strcmp(option, name) == 0)
            return true;
    }
    return false;
}

// Whether a class has the test function a name selects ("name" or "name:tag").
bool hasFunction(const QObject* test, const QByteArray& selector)
{
    const QByteArray name = selector.left(selector.indexOf(':') < 0 ? selector.size() : selector.indexOf(':'));
    const QMetaObject* meta = test->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() == QMetaMethod::Slot && method.name() == name && method.parameterCount() == 0)
            return true;
    }
    return false;
}

} // namespace

int runAll(int argc, char** argv)
{
    // Options go to every class; plain names select a class (its name) or
    // test functions, and each class runs only with the functions it has.
    std::vector<char*> options{argv[0]};
    std::vector<QByteArray> names;
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '-') {
            options.push_back(argv[i]);
            if (takesValue(argv[i]) && i + 1 < argc)
                options.push_back(argv[++i]);
        } else {
            names.emplace_back(argv[i]);
        }
    }

    int failures = 0;
    std::vector<bool> used(names.size(), false);
    for (const Factory& make : factories()) {
        std::unique_ptr<QObject> test(make());
        const QByteArray className = test->metaObject()->className();
        std::vector<char*> args = options;
        bool selected = names.empty();
        for (size_t n = 0; n < names.size(); ++n) {
            if (names[n] == className) {
                used[n] = true;
                selected = true;
            } else if (hasFunction(test.get(), names[n])) {
                used[n] = true;
                selected = true;
                args.push_back(names[n].data());
            }
        }
        if (!selected)
            continue;
        failures += QTest::qExec(test.get(), static_cast<int>(args.size()), args.data());
    }
    for (size_t n = 0; n < names.size(); ++n) {
        if (!used[n]) {
            std::fprintf(stderr, "No test class or test function is named \"%s\".\n", names[n].constData());
            ++failures;
        }
    }
    return failures;
}

} // namespace TestRegistry
