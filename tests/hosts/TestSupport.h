// Helpers shared by the host's tests: generated images, scratch directories,
// running the command-line host.
#ifndef PLUMET_TESTS_HOSTS_TESTSUPPORT_H
#define PLUMET_TESTS_HOSTS_TESTSUPPORT_H

#include "hosts/HostImage.h"

#include <string>
#include <vector>

namespace plumet::hosts::testing {

// An image whose every byte depends on row, column and plane, so that a
// misplaced pixel or plane shows.
HostImage Pattern(int width, int height, ColourModel model, bool alpha);

// The byte Pattern puts at (row, col, plane).
uint8_t PatternValue(int row, int col, int plane);

// A fresh empty directory under the build tree, named after the test.
std::string ScratchDir(const std::string& name);

bool FileExists(const std::string& path);
void WriteBytes(const std::string& path, const std::string& bytes);
std::string ReadText(const std::string& path);

struct Command {
    int status = -1; // exit status, or -1 if it did not exit normally
    std::string out;
    std::string err;
};

// Runs the command-line host with the arguments and extra environment
// assignments ("NAME=value"), without DISPLAY or QT_QPA_PLATFORM.
Command RunPlumet(const std::vector<std::string>& args, const std::vector<std::string>& env = {});

// Saves 0x00RRGGBB words as a PNG in the test output directory.
void SaveSurfacePng(const std::string& name, const std::vector<uint32_t>& pixels, int width,
                    int height);

std::string TestFilterPath(const std::string& variant = "testfilter");

} // namespace plumet::hosts::testing

#endif
