#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream(stderr) << "usage: marlet <command> [options]\n";
    return 2;
}
