// tzmap-sampledata OUTDIR: writes tzmap's sample data set into OUTDIR.
#include "TZSampleDataGenerator.h"

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
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
    std::printf("Sample data written to %s\n", argv[1]);
    return 0;
}
