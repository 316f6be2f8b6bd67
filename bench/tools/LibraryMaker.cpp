#include "base/Error.h"
#include "bench/tools/SampleLibrary.h"

#include <cstdio>
#include <cstdlib>

/// library_maker COUNT FOLDER: a library of so many items in that folder, which is made if need be.
int main(int argc, char** argv)
{
    const long count = argc == 3 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (count <= 0) {
        std::fputs("usage: library_maker COUNT FOLDER\n", stderr);
        return 2;
    }
    try {
        const tessary::AppPaths paths = tessary::AppPaths::create(QString::fromLocal8Bit(argv[2]));
        tessary::bench::SampleLibrary(paths).fill(count);
    } catch (const tessary::Error& error) {
        std::fprintf(stderr, "library_maker: %s\n", error.what());
        return 1;
    }
    return 0;
}
