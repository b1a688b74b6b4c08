// ui_tests [CLASS [Qt Test options]]: runs one test class, or every class in turn; ctest runs
// each class as its own test, named after it.

#include "document/amq_file.h"
#include "ui_test.h"

#include <cstdio>
#include <vector>

namespace ampora::test {

std::map<QString, UiTestMaker>& UiTests() {
    static std::map<QString, UiTestMaker> tests;
    return tests;
}

QString Session::Dump() const {
    return QString::fromStdString(CircuitFileText(workspace.Circuit));
}

} // namespace ampora::test

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    const bool one = argc > 1 && argv[1][0] != '-';
    std::vector<char*> options = {argv[0]};
    options.insert(options.end(), argv + (one ? 2 : 1), argv + argc);
    int ran = 0;
    int failed = 0;
    for (const auto& [name, make] : ampora::test::UiTests()) {
        if (!one || name == QString::fromLocal8Bit(argv[1])) {
            const std::unique_ptr<QObject> test = make();
            failed += QTest::qExec(test.get(), int(options.size()), options.data()) != 0;
            ++ran;
        }
    }
    if (ran == 0) {
        std::fprintf(stderr, "no test class named %s\n", argv[1]);
        return 2;
    }
    return failed;
}
