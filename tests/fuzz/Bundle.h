#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace fuzz {

/// Several files in one run of bytes: a line "@NAME" begins each; what stands before the first one is dropped.
std::map<std::string, std::string> filesOf(std::string_view bundle);

/// A directory of its own for the time of the process, with a good set of files that bundles replace one by one.
class Workplace {
  public:
    /// \param good  may be empty; files that a bundle does not name are as here
    explicit Workplace(std::map<std::string, std::string> good);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    [[nodiscard]] const std::filesystem::path& directory() const { return directory_; }
    /// Lays the files of a bundle over the good ones. Names that the good set lacks are passed over, unless it is
    /// empty.
    void lay(std::string_view bundle);
    /// One file as it stands. \return its place
    std::filesystem::path put(const std::string& name, std::string_view bytes);

  private:
    std::filesystem::path directory_;
    std::map<std::string, std::string> good_;
    std::map<std::string, std::string> laid_;
};

}  // namespace fuzz
