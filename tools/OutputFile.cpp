#include "tools/OutputFile.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <utility>

#include "tools/Failure.h"

namespace tool {
namespace {

Failure cannotWrite(const std::string &path, int error) {
    return Failure(path + ": cannot write: " + std::strerror(error));
}

} // namespace

OutputFile::OutputFile(std::string path)
    : path_(std::move(path)), temporary_(path_ + ".part" + std::to_string(getpid())) {
    stream_ = std::fopen(temporary_.c_str(), "wbx");
    if (stream_ == nullptr)
        throw cannotWrite(path_, errno);
}

OutputFile::~OutputFile() {
    if (stream_ == nullptr)
        return;
    std::fclose(stream_);
    std::remove(temporary_.c_str());
}

void OutputFile::commit() {
    // An earlier failed write shows in the stream's error mark, a late one in the flush.
    const bool isWhole = std::fflush(stream_) == 0 && std::ferror(stream_) == 0;
    if (!isWhole || std::rename(temporary_.c_str(), path_.c_str()) != 0)
        throw cannotWrite(path_, errno);
    std::fclose(stream_);
    stream_ = nullptr;
}

} // namespace tool
