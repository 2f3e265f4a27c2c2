// A file that gets its final name only when it is complete.
#pragma once

#include <string>

namespace record {

/// Written beside @p finalPath under another name until Commit; removed if that is never called.
class UnfinishedFile {
public:
    /// Creates it, empty. This and Commit throw std::runtime_error, without the path in its text,
    /// if it cannot be written, or if @p finalPath exists and is not a regular file.
    explicit UnfinishedFile(const std::string& finalPath);
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

    /// Where to write.
    const std::string& Path() const { return path; }

    /// Renames it to its final name, replacing an existing file.
    void Commit();

private:
    std::string target;
    std::string path; // empty: committed
};

} // namespace record
