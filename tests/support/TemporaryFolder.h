// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace stowpocket {

/// A fresh folder that goes with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder()
        : path_(std::filesystem::canonical(std::filesystem::temp_directory_path()) / "contract-XXXXXX") {
        if (::mkdtemp(path_.data()) == nullptr)
            std::abort();
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string path(const std::string& name) const { return path_ + '/' + name; }
    [[nodiscard]] FileURL url(const std::string& name) const { return *FileURL::fromPath(path(name)); }

    void write(const std::string& name, const std::string& contents = "contents") const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << contents;
    }
    [[nodiscard]] std::string read(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void rename(const std::string& from, const std::string& to) const {
        std::filesystem::create_directories(std::filesystem::path(path(to)).parent_path());
        std::filesystem::rename(path(from), path(to));
    }
    /// The names in the folder, or in one inside it, hidden ones too, in their order.
    [[nodiscard]] std::vector<std::string> names(const std::string& inside = {}) const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(path(inside)))
            found.push_back(entry.path().filename());
        std::ranges::sort(found);
        return found;
    }

private:
    std::string path_;
};

}  // namespace stowpocket
