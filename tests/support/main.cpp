// The program of a folder of tests: runs the one that is named first, with the options of the test library.
#include "support/TestProgram.h"

#include <QFileInfo>

#include <cstdio>
#include <map>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

namespace kalmo::tests {

namespace {

/// By their names. Made at the first use, since the classes introduce themselves before main().
std::map<QString, TestClass::Maker>& makers()
{
    static std::map<QString, TestClass::Maker> all;
    return all;
}

int refuse()
{
    std::fputs("usage: NAME [options of the test library]; the names are:\n", stderr);
    for (const auto& [name, maker] : makers())
        std::fprintf(stderr, "  %s\n", qPrintable(name));
    return 2;
}

} // namespace

TestClass::TestClass(const char* file, Maker maker)
{
    const QString name = QFileInfo(QString::fromLocal8Bit(file)).baseName();
    makers().emplace(name.mid(name.indexOf(QLatin1Char('_')) + 1), maker);
}

} // namespace kalmo::tests

#ifdef __SANITIZE_ADDRESS__
/// Asked by the leak sanitizer at the end. The fonts' library never frees some of its patterns.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so";
}
#endif

int main(int argc, char** argv)
{
    const auto found = makers().find(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString());
    if (found == makers().end())
        return refuse();
    // The test library and what a test asks of the application see the arguments without the name.
    std::vector<char*> arguments(argv + 1, argv + argc);
    arguments.front() = argv[0];
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    const Application application(count, arguments.data());
    return QTest::qExec(found->second().get(), count, arguments.data());
}
