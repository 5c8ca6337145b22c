#include "TestSupport.h"

#include "hosts/ImageFiles.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace plumet::hosts::testing {

uint8_t PatternValue(int row, int col, int plane) {
    return uint8_t(row * 7 + col * 13 + plane * 61 + (row * col) % 5);
}

HostImage Pattern(int width, int height, ColourModel model, bool alpha) {
    HostImage image;
    std::string error;
    if (!MakeImage(width, height, model, alpha, image, error)) std::abort();
    for (int r = 0; r < height; ++r)
        for (int c = 0; c < width; ++c)
            for (int p = 0; p < image.Planes(); ++p)
                image.Pixel(r, c)[p] = PatternValue(r, c, p);
    return image;
}

std::string ScratchDir(const std::string& name) {
    const std::filesystem::path dir =
        std::filesystem::path(PLUMET_BINARY_DIR) / "tests" / "hosts" / "scratch" / name;
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir.string();
}

bool FileExists(const std::string& path) {
    return std::filesystem::exists(path);
}

void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

namespace {

std::string Quote(const std::string& s) {
    std::string q = "'";
    for (char c : s)
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

} // namespace

Command RunPlumet(const std::vector<std::string>& args, const std::vector<std::string>& env) {
    static int counter = 0;
    const std::string dir =
        std::filesystem::path(PLUMET_BINARY_DIR) / "tests" / "hosts" / "scratch";
    std::filesystem::create_directories(dir);
    const std::string tag =
        dir + "/cmd" + std::to_string(getpid()) + "_" + std::to_string(++counter);
    std::string line = "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM";
    // (appended piece by piece: GCC 12 at -O3 warns wrongly of overlap for
    // " " + a temporary)
    for (const auto& word : env)
        line.append(" ").append(Quote(word));
    line.append(" ").append(Quote(PLUMET_EXE));
    for (const auto& word : args)
        line.append(" ").append(Quote(word));
    line += " >" + Quote(tag + ".out") + " 2>" + Quote(tag + ".err") + " </dev/null";
    Command result;
    const int raw = std::system(line.c_str());
    result.status = (raw != -1 && WIFEXITED(raw)) ? WEXITSTATUS(raw) : -1;
    result.out = ReadText(tag + ".out");
    result.err = ReadText(tag + ".err");
    std::filesystem::remove(tag + ".out");
    std::filesystem::remove(tag + ".err");
    return result;
}

void SaveSurfacePng(const std::string& name, const std::vector<uint32_t>& pixels, int width,
                    int height) {
    HostImage image;
    std::string error;
    if (!MakeImage(width, height, ColourModel::RGB, false, image, error)) return;
    for (int r = 0; r < height; ++r)
        for (int c = 0; c < width; ++c) {
            const uint32_t w = pixels[size_t(r) * size_t(width) + size_t(c)];
            uint8_t* px = image.Pixel(r, c);
            px[0] = uint8_t(w >> 16);
            px[1] = uint8_t(w >> 8);
            px[2] = uint8_t(w);
        }
    std::filesystem::create_directories(PLUMET_TEST_OUTPUT);
    WriteImageFile(std::string(PLUMET_TEST_OUTPUT) + "/" + name + ".png", image, error);
}

std::string TestFilterPath(const std::string& variant) {
    return std::string(TESTFILTER_DIR) + "/" + variant + ".8bf";
}

} // namespace plumet::hosts::testing
