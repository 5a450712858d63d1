// tzmap-sampledata OUTDIR: writes tzmap's sample data set into OUTDIR, and
// the project sample.tzmap that opens it with its symbology.
#include "TZSampleDataGenerator.h"
#include "TZSampleProjectWriter.h"

#include <QCoreApplication>

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 2 || std::string(argv[1]) == "--help") {
        std::fprintf(stderr, "usage: %s OUTDIR\nWrites the tzmap sample data set into OUTDIR.\n", argv[0]);
        return 2;
    }
    TZSampleDataGenerator generator(argv[1]);
    std::string error;
    if (!generator.generate(&error)) {
        std::fprintf(stderr, "tzmap-sampledata: %s\n", error.c_str());
        return 1;
    }
    QString projectError;
    if (!TZSampleProjectWriter::write(QString::fromLocal8Bit(argv[1]), &projectError)) {
        std::fprintf(stderr, "tzmap-sampledata: %s\n", qPrintable(projectError));
        return 1;
    }
    std::printf("Sample data written to %s\n", argv[1]);
    return 0;
}
