// Opens a page in a browser without a screen and hears what a script found in it. The script goes into a
// copy, which forbids itself every request to elsewhere.
#pragma once

#include <cstring>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "console/console_run.h"

namespace page_test {

using namespace console_test;
using Json = nlohmann::json;

struct Looks {
    int Width = 1024; // pixels
    bool Dark = false;
};

inline std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    if (at == std::string::npos)
        throw std::runtime_error("the page has no " + from);
    return text.replace(at, from.size(), to);
}

inline std::string OwnFile(const std::string& name)
{
    const std::string text = Contents(fs::path(KORVANTI_SOURCE_DIR) / "tests/pages" / name);
    if (text.empty())
        throw std::runtime_error("tests/pages/" + name + " cannot be read");
    return text;
}

inline std::string ScriptOf(const std::string& name)
{
    return "<script>" + OwnFile(name) + "</script>";
}

inline std::string Watched(const std::string& page)
{
    const std::string policy =
        "<head><meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
        "'unsafe-inline'; script-src 'unsafe-inline'\">";
    return Replaced(Replaced(page, "<head>", policy + ScriptOf("watch.js")), "</body>",
                    ScriptOf("look.js") + ScriptOf("use.js") + ScriptOf("tell.js") + "</body>");
}

// What stands between the tags of a document that the browser prints.
inline std::string PlainText(std::string text)
{
    for (const auto& [name, letter] :
         {std::pair("&lt;", "<"), {"&gt;", ">"}, {"&nbsp;", "\xC2\xA0"}, {"&amp;", "&"}})
        for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1))
            text.replace(at, std::strlen(name), letter);
    return text;
}

class Pages : public Console {
  protected:
    void SetUp() override
    {
        Console::SetUp();
        const fs::path examples = fs::path(KORVANTI_SOURCE_DIR) / "examples";
        for (const char* const table : {"KVHBD.cfg", "DT.Par", "EvHeader.dat", "OptSettings.Dat"})
            fs::copy_file(examples / "install" / table, Folder / "home" / table);
    }

    std::string Example(const std::string& name)
    {
        const fs::path file = fs::path(KORVANTI_SOURCE_DIR) / "examples/drawings" / name;
        fs::copy_file(file, Folder / name, fs::copy_options::overwrite_existing);
        return name;
    }

    // The page that a call writes.
    std::string PageOf(Words words)
    {
        const Ended ended = Run(words);
        EXPECT_EQ(ended.Status, 0) << ended.Errors;
        return Contents(Folder / words.back());
    }

    std::string Drawn(const std::string& example, Words settings = {})
    {
        Words words = {"draw", Example(example)};
        words.insert(words.end(), settings.begin(), settings.end());
        words.insert(words.end(), {"-o", "drawn.html"});
        return PageOf(words);
    }

    Json Opened(const std::string& page, const Looks& looks)
    {
        const fs::path copy = Folder / "browser";
        fs::remove_all(copy);
        fs::create_directories(copy);
        Put(copy / "page.html", Watched(page));
        Put(copy / "frame.html", Replaced(OwnFile("frame.html"), "WIDTH", std::to_string(looks.Width)));
        const Ended ended =
            RunCall({"/usr/bin/timeout", "50", "chromium", "--headless", "--no-sandbox", "--disable-gpu",
                     "--disable-dev-shm-usage", "--disable-quic", "--no-first-run",
                     "--disable-background-networking", "--disable-component-update", "--disable-sync",
                     "--hide-scrollbars", "--user-data-dir=" + (copy / "profile").string(),
                     "--window-size=1920,1000", "--virtual-time-budget=60000",
                     std::string("--blink-settings=preferredColorScheme=") + (looks.Dark ? "0" : "1"),
                     "--dump-dom", "file://" + (copy / "frame.html").string()},
                    {"HOME=" + copy.string()});
        const std::string mark = "<pre id=\"results\">";
        const std::size_t at = ended.Output.find(mark), end = ended.Output.find("</pre>", at);
        if (at == std::string::npos || end == std::string::npos) {
            ADD_FAILURE() << "the browser tells nothing, status " << ended.Status << "\n"
                          << ended.Errors.substr(0, 2000);
            return {};
        }
        return Json::parse(PlainText(ended.Output.substr(at + mark.size(), end - at - mark.size())));
    }
};

} // namespace page_test
