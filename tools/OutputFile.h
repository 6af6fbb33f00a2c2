// A file that appears under its name only when it is whole.
#pragma once

#include <cstdio>
#include <string>

namespace tool {

// Writes beside the place that is asked for, and moves there in commit(). Without that, nothing stays behind.
class OutputFile {
public:
    // Throws a Failure that names the file if it cannot be made.
    explicit OutputFile(std::string path);
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    std::FILE *stream() const { return stream_; }

    // Ends the file and gives it its name. Throws a Failure if anything of it could not be written.
    void commit();

private:
    std::string path_;
    std::string temporary_;
    std::FILE *stream_ = nullptr;
};

} // namespace tool
