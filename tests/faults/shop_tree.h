// A folder with all below it as one value: what stands in it, put down, taken up and compared.
#pragma once

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

namespace fault_test {

namespace fs = std::filesystem;

// Contents by path from the folder on; a folder has a slash at its end and no contents.
using Tree = std::map<std::string, std::string>;

inline std::string FileBytes(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void PutBytes(const fs::path& path, const std::string& bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path.string());
}

inline Tree TakeUp(const fs::path& folder)
{
    Tree tree;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().lexically_relative(folder).generic_string();
        if (entry.is_directory())
            tree[name + "/"] = "";
        else
            tree[name] = FileBytes(entry.path());
    }
    return tree;
}

// The folder afterwards holds nothing else.
inline void PutDown(const Tree& tree, const fs::path& folder)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (const auto& [name, bytes] : tree) {
        if (name.back() == '/')
            fs::create_directories(folder / name);
        else
            PutBytes(folder / name, bytes);
    }
}

inline std::string LastName(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path.substr(path.rfind('/') + 1);
}

inline std::string Lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

} // namespace fault_test
