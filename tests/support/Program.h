// Runs the oxlume program as a user would, and looks at what it did.
#pragma once

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace lx::test {

struct ProgramResult {
    int status;
    std::string output; // standard output
    std::string errors; // standard error
};

inline std::string readFile(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeFile(const std::filesystem::path &path, const std::string &content) {
    std::ofstream(path, std::ios::binary) << content;
}

// A folder of the test's own, removed at its end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "oxlume-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    std::filesystem::path operator/(const std::string &name) const { return path_ / name; }
    const std::filesystem::path &path() const { return path_; }

private:
    std::filesystem::path path_;
};

// Runs the program with arguments as the shell splits them.
inline ProgramResult runProgram(const std::string &arguments) {
    const TemporaryFolder folder;
    const std::filesystem::path errors = folder / "errors";
    const std::string command = std::string(OXLUME_PROGRAM) + " " + arguments + " 2>" + errors.string();
    ProgramResult result = {-1, {}, {}};
    std::FILE *pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return result;
    std::array<char, 4096> buffer;
    while (const size_t read = std::fread(buffer.data(), 1, buffer.size(), pipe))
        result.output.append(buffer.data(), read);
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.errors = readFile(errors);
    return result;
}

} // namespace lx::test
