#ifndef VELLACORE_TESTS_TEMPDIR_H
#define VELLACORE_TESTS_TEMPDIR_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace VellacoreTest {

// Runs a test inside a fresh directory of its own, so files the engine writes into the working
// directory ("Xapp.log") never collide between tests that ctest runs in parallel.
class TempDir {
public:
    TempDir() : m_Previous(std::filesystem::current_path())
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "vellacore-test-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            std::abort();
        m_Path = pattern;
        std::filesystem::current_path(m_Path);
    }
    ~TempDir()
    {
        std::filesystem::current_path(m_Previous);
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }
    TempDir(TempDir const&) = delete;
    TempDir& operator=(TempDir const&) = delete;

    std::filesystem::path const& Path() const { return m_Path; }

private:
    std::filesystem::path m_Previous;
    std::filesystem::path m_Path;
};

// The whole file, or an empty string when it cannot be read.
inline std::string ReadFile(std::filesystem::path const& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream contents;
    contents << in.rdbuf();
    return contents.str();
}

} // namespace VellacoreTest

#endif
