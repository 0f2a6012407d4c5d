#include "Vellacore/Core/Path.h"

namespace Vellacore {

namespace {

std::string::size_type FindSeparator(std::string const& path)
{
    std::string::size_type at = path.rfind('/');
    return at != std::string::npos ? at : path.rfind('\\');
}

} // namespace

std::string ExtractFilename(std::string path)
{
    std::string::size_type at = FindSeparator(path);
    return at == std::string::npos ? path : path.substr(at + 1);
}

std::string ExtractFilepath(std::string path)
{
    std::string::size_type at = FindSeparator(path);
    return at == std::string::npos ? path : path.substr(0, at + 1);
}

std::string ExtractFilenameExt(std::string path)
{
    std::string name = ExtractFilename(path);
    return name.substr(0, name.rfind('.'));
}

} // namespace Vellacore
