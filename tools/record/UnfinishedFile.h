// A file that has its name only once it is whole.
#pragma once

#include <string>

namespace record {

/// Written beside @p finalPath under another name until Keep; removed if that is never called.
class UnfinishedFile {
public:
    /// Creates it, empty. This and Keep throw std::runtime_error, whose text leaves out the path,
    /// where it cannot be written; so they do where @p finalPath is there and is no ordinary file.
    explicit UnfinishedFile(const std::string& finalPath);
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

    /// Where to write.
    const std::string& Path() const { return path; }

    /// Gives it its name, in place of a file that had it.
    void Keep();

private:
    std::string target;
    std::string path; // empty: kept
};

} // namespace record
