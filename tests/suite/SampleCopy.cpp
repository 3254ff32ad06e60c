#include "tests/suite/SampleCopy.h"

#include <filesystem>

SampleCopy::SampleCopy() {
    const std::string path = folder_.file("company.db");
    std::filesystem::copy_file(SAMPLE_COMPANY, path);
    connection = sandbox::openConnection(path);
}
