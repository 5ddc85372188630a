// The program kalmo-handset.

#include "handset/program/Program.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    using namespace kalmo::handset;
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    Program program(parseCommandLine(application.arguments().sliced(1)), out, err);
    return program.run();
}
