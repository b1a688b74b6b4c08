#pragma once
// What the fuzz targets do with one input, kept here so that a normal test can replay every
// input the fuzzers ever tripped over. Each returns "" when all went well and otherwise
// says which promise was broken; a crash or a sanitizer report is a finding by itself.

#include <string>
#include <string_view>

namespace ampora::test {

// Reads the bytes as an .amq file; whatever was read is written out and read back, then
// taken through the whole analysis as a student would: leaving step 1, AutoName (the
// pattern and the significant figures come from the input's length), leaving step 2, the
// labels of the four views and the texts of the equations window.
std::string ExerciseAmqAnalysis(std::string_view bytes);

} // namespace ampora::test
