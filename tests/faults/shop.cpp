// What stands in the shops: settings that differ from the defaults, an index, programs, notes, a cut list of
// 20 rows, tables of all machines, and drawings that use them.
#include "faults/shop.h"

#include <cstring>

#include "support/dxf.h"
#include "support/index_row.h"

namespace fault_test {

namespace {

using namespace kv::test;

const fs::path Examples = fs::path(KORVANTI_SOURCE_DIR) / "examples";

// Replaces the line of a key.
void SetKey(std::string& settings, const std::string& key, const std::string& value)
{
    const std::size_t at = settings.find("\n" + key + "=") + 1;
    if (at == 0)
        throw std::runtime_error("no key " + key);
    settings.replace(at, settings.find('\n', at) - at, key + "=" + value + "\r");
}

std::string SettingsOf(const std::string& control, const fs::path& root)
{
    std::string text;
    for (const std::string& line : [&] {
             std::vector<std::string> lines;
             std::ifstream file(Examples / "install/KV90.INI");
             for (std::string one; std::getline(file, one);)
                 lines.push_back(one);
             return lines;
         }())
        text += line + (line.ends_with('\r') ? "\n" : "\r\n");
    const auto folder = [&](const char* name) { return (root / name).string() + "/"; };
    for (const char* const key : {"SourcePath90", "SourcePathGen", "SourcePathEV"})
        SetKey(text, key, folder("IN"));
    SetKey(text, "DestinationPath90", folder("CNC90/SORG"));
    SetKey(text, "DestinationPathGen", folder("GEN"));
    SetKey(text, "DestinationPathEV", folder("EVO"));
    SetKey(text, "HBDDestinationPath", folder("HBD"));
    SetKey(text, "Path", folder("CUT"));
    SetKey(text, "Winner90", control == "cnc90" ? "True" : "False");
    SetKey(text, "Genesis", control == "genesis" ? "True" : "False");
    SetKey(text, "GenesisEV", control == "evolution" ? "True" : "False");
    SetKey(text, "EvOptOff", "False");
    SetKey(text, "EvOptGS", "True"); // reads OptSettings.Dat
    SetKey(text, "MakeHBD", " 1");
    SetKey(text, "OffsetX", "7");
    SetKey(text, "LeadLength", "31");
    SetKey(text, "PrecisionMetric", "3");
    SetKey(text, "Optimizer", "1");
    SetKey(text, "Enabled0", "1");
    SetKey(text, "Pockets",
           "told\r\nCarryOver=clean"); // a failed drawing must not show in the next one's program
    return text;
}

// Records that the conversions leave alone, and one that they replace.
const char* const OldNames[] = {"ARCH", "DF597", "MIRRORFRAME2", "SIDE2OLD", "X", "ZEBRA"};

void PutOldPrograms(Tree& tree)
{
    std::string index;
    for (const char* const name : OldNames) {
        index += index_row::Bytes({name, "OLD PROGRAM", 0, 'M', 500, 300, 16, 0x10, 'S'}, "01/02/25");
        const std::string letters = name;
        const std::string rest =
            letters.size() > 9 ? letters.substr(1, 8) + "." + letters.substr(9) : letters.substr(1);
        const std::string place = letters.size() < 2 ? "00/" + letters : letters.substr(0, 1) + "/" + rest;
        tree["CNC90/SORG/SRG/" + place] =
            "G71X500Y300Z16T00N3L0\r\nG150(OLD PROGRAM OF " + letters + ")\r\nM2\r\n";
    }
    tree[IndexPlace] = index;
}

const Words OperatorNotes = {"Blade 4 is blunt: take 5.", "Ask Anna before the second side.",
                             "Stack face down."};

void PutNotesAndLists(Tree& tree)
{
    tree[NotesPlace] = OperatorNotes[0] + "\r\n" + OperatorNotes[1] +
                       "\r\n--- Begin CAD Notes ---\r\nAN OLD NOTE\r\n--- End CAD Notes ---\r\n" +
                       OperatorNotes[2] + "\r\n";
    std::string list = "2.00, 20,M\r\n";
    for (int row = 1; row <= 20; ++row)
        list += "\"OLD PART " + std::to_string(row) + "\",300,500,1,\"BEECH 19\",\"KEPT ROW\",12\r\n";
    tree[CutListPlace] = list;
    tree["CNC90/TMP/Navetta.cmd"] = std::string(372, '.');
    tree["HBD/OLDPART"] = "an old program of the horizontal machine\r\n";
    tree["GEN/OLDPART"] = "an old program\r\n";
    tree["EVO/OLDPART.CNC"] = "an old program\r\n";
    tree["EVO/DF597.CNC"] = "a program that will be replaced\r\n";
}

std::string CutPanel(const std::string& name, double x)
{
    return Drawing(Instructions({"PTS NAME=" + name, "PTS QTY=3"}) + Rectangle("BORDER_Z18", 0, 0, 600, 400) +
                   Circle("VBORE_Z12F3000", x, 50, 4));
}

Tree TreeOf(const std::string& control, const fs::path& root)
{
    Tree tree;
    for (const char* const file : {"DT.Par", "EvHeader.dat", "KVHBD.cfg", "OptSettings.Dat"})
        tree[std::string("HOME/") + file] = FileBytes(Examples / "install" / file);
    tree[SettingsPlace] = SettingsOf(control, root);
    for (const char* const drawing : {"drawer_front", "t_lines", "system_rows"})
        tree[std::string("IN/") + drawing + ".dxf"] =
            FileBytes(Examples / "drawings" / (std::string(drawing) + ".dxf"));
    tree["IN/side2.dxf"] = CutPanel("SIDE2", 100);
    tree["IN/probe.dxf"] = Drawing(Rectangle("BORDER_Z18", 0, 0, 300, 200) + Circle("VBORE_Z9", 40, 40, 4));
    PutOldPrograms(tree);
    PutNotesAndLists(tree);
    tree["RUN/"] = tree["CONFIG/"] = "";
    return tree;
}

Words Call(const fs::path& root, const Words& words)
{
    Words call = {"--home", (root / "HOME").string()};
    call.insert(call.end(), words.begin(), words.end());
    return call;
}

Shop ShopOf(const std::string& name, const std::string& control, const fs::path& root)
{
    Shop shop;
    shop.Name = name;
    shop.Before = TreeOf(control, root);
    shop.ProbeCall = Call(root, {"convert", (root / "IN/probe.dxf").string()});
    shop.Environment = {"DIRTMP=" + (root / "CNC90/TMP").string(), "ROOT=C:\\CNC90",
                        "XDG_CONFIG_HOME=" + (root / "CONFIG").string(),
                        "XDG_RUNTIME_DIR=" + (root / "RUN").string(), "HOME=" + (root / "CONFIG").string()};
    shop.OperatorLines = OperatorNotes;
    return shop;
}

} // namespace

Shop WithJobs(Shop shop, unsigned mask)
{
    Words jobs;
    for (std::size_t i = 0; i < shop.Jobs.size(); ++i) {
        if ((mask >> i & 1U) != 0)
            jobs.push_back(shop.Jobs[i]);
    }
    if (shop.Watches) {
        std::string& list = shop.Before["IN/BATCH.LST"];
        list.clear();
        for (const std::string& line : jobs)
            list += line + "\r\n";
    } else {
        shop.Call.resize(shop.Call.size() - shop.Jobs.size());
        shop.Call.insert(shop.Call.end(), jobs.begin(), jobs.end());
    }
    shop.Jobs = jobs;
    return shop;
}

Shop ListOfDrawings(const std::string& control, const fs::path& root)
{
    Shop shop = ShopOf(control, control, root);
    for (const char* const drawing : {"drawer_front", "t_lines", "system_rows", "side2"})
        shop.Jobs.push_back((root / "IN" / (std::string(drawing) + ".dxf")).string());
    shop.Call = Call(root, {"convert"});
    shop.Call.insert(shop.Call.end(), shop.Jobs.begin(), shop.Jobs.end());
    if (control == "cnc90")
        shop.Programs = {"CNC90/SORG/SRG/D/F597", "CNC90/SORG/SRG/T/_LINES", "CNC90/SORG/SRG/S/YSTEM_RO.WS",
                         "CNC90/SORG/SRG/S/IDE2"};
    if (control == "genesis")
        shop.Programs = {"GEN/DF597", "GEN/t_lines", "GEN/SYSTEM_R.OWS", "GEN/side2"};
    if (control == "evolution")
        shop.Programs = {"EVO/DF597.CNC", "EVO/t_lines.CNC", "EVO/system_rows.CNC",
                         "HBD/side2"}; // the horizontal machine drills its one bore
    return shop;
}

Shop WatchedDrawing(const fs::path& root)
{
    Shop shop = ShopOf("watch_temp", "cnc90", root);
    SetKey(shop.Before[SettingsPlace], "AutoStartTemp", "True");
    shop.Before["IN/Temp.DXF"] = shop.Before["IN/drawer_front.dxf"];
    shop.Call = Call(root, {"watch", "/S"});
    shop.Programs = {"CNC90/SORG/SRG/D/F597"};
    shop.Watches = true;
    return shop;
}

Shop WatchedBatch(const fs::path& root)
{
    Shop shop = ShopOf("watch_batch", "cnc90", root);
    SetKey(shop.Before[SettingsPlace], "AutoStartBatch", "True");
    shop.Jobs = {"DRAWER_FRONT.DXF", "T_LINES.DXF ^ TLINES", "SIDE2.DXF SIDE2"};
    for (const std::string& line : shop.Jobs)
        shop.Before["IN/BATCH.LST"] += line + "\r\n";
    shop.Call = Call(root, {"watch", "/S", "/K"});
    shop.Programs = {"CNC90/SORG/SRG/D/F597", "CNC90/SORG/SRG/T/LINES", "CNC90/SORG/SRG/S/IDE2"};
    shop.Watches = true;
    return shop;
}

} // namespace fault_test
