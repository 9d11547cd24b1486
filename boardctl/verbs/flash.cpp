// Flash partitions, boot variables, calibration data.
#include <fmt/format.h>

#include <algorithm>

#include "board/model/flash.h"
#include "board/store/store.h"
#include "boardctl/call/call.h"
#include "boardctl/facts/radios.h"

namespace boardctl {
namespace {

constexpr const char* kUploaded = "/tmp/calibration.bin";

Outcome list(Session& session, const Arguments&) {
    Json rows = Json::array();
    for (const board::Partition& partition : board::partitions())
        rows.push_back({{"partition", partition.name},
                        {"device", partition.device},
                        {"bytes", session.platform.mtd_get_size(partition.name.c_str())},
                        {"erase_bytes", partition.erase_size}});
    return {{{"partitions", rows}}};
}

std::string read_bytes(const Session& session, const std::string& partition, int offset,
                       int length) {
    std::string bytes(static_cast<size_t>(length), '\0');
    const int size = session.platform.mtd_readbuf(bytes.data(), offset, length, partition.c_str());
    if (size < 0) throw Failed("cannot read " + partition);
    bytes.resize(static_cast<size_t>(size));
    return bytes;
}

std::string digits_of(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes)
        text += fmt::format("{}{:02x}", text.empty() ? "" : " ", static_cast<unsigned char>(byte));
    return text;
}

Json dump(const std::string& bytes, int offset) {
    constexpr size_t kLine = 16;
    Json rows = Json::array();
    for (size_t i = 0; i < bytes.size(); i += kLine) {
        const std::string part = bytes.substr(i, kLine);
        std::string text = part;
        for (char& byte : text)
            if (byte < ' ' || byte > '~') byte = '.';
        rows.push_back({{"offset", fmt::format("{:08x}", static_cast<size_t>(offset) + i)},
                        {"bytes", digits_of(part)},
                        {"text", text}});
    }
    return rows;
}

// Its size; throws UsageError.
int size_of(const Session& session, const std::string& partition) {
    std::vector<std::string> names;
    for (const board::Partition& each : board::partitions()) names.push_back(each.name);
    require_one_of(names, partition, "PARTITION");
    return static_cast<int>(session.platform.mtd_get_size(partition.c_str()));
}

Outcome read(Session& session, const Arguments& arguments) {
    const std::string partition = arguments.text("PARTITION");
    const int size = size_of(session, partition);
    const bool to_file = arguments.has("--output");
    const int offset = arguments.number("--offset", 0, {0, size - 1});
    const int rest = size - offset;
    const int usual = to_file ? rest : std::min(rest, 256);
    const int length = arguments.number("--length", usual, {1, rest});
    const auto bytes = read_bytes(session, partition, offset, length);
    if (!to_file) return {{{"content", dump(bytes, offset)}}};
    session.folders.write(arguments.text("--output"), bytes);
    return {{{"written", bytes.size()}, {"file", arguments.text("--output")}}};
}

// Each stands between blanks in a command of at most 255 bytes.
void check_variable(const std::string& name, const std::string& value) {
    constexpr size_t kLongest = 128;
    const bool has_line = (name + value).find_first_of("&\r\n") != std::string::npos;
    if (name.starts_with('-') || name.find('=') != std::string::npos || has_line ||
        name.size() + value.size() > kLongest)
        throw UsageError(
            "a boot variable's name begins with no \"-\" and holds no \"=\"; it and its value hold "
            "no \"&\" and no line end, and are at most " +
            std::to_string(kLongest) + " bytes together");
}

Outcome get_variables(Session& session, const Arguments& arguments) {
    auto names = arguments.texts("NAME");
    if (names.empty()) names = {"ethaddr", "bootdelay", "diag", "ftm"};
    Json answer = Json::object();
    for (const std::string& name : names) {
        check_variable(name, "");
        char value[1024];
        if (session.platform.get_bootconfig(name.c_str(), value, sizeof value) == 0)
            throw Failed("the boot environment cannot be read");
        answer[name] = value;
    }
    return {answer};
}

Outcome set_variable(Session& session, const Arguments& arguments) {
    const std::string name = arguments.text("NAME");
    const std::string value = arguments.text("VALUE");
    check_variable(name, value);
    session.platform.set_bootconfig("set", (name + '=' + value).c_str());
    char stored[1024];
    session.platform.get_bootconfig(name.c_str(), stored, sizeof stored);
    return {{{name, stored}}, stored == value ? kGood : kFailed};
}

Json calibration_row(const Session& session, const Radio& radio) {
    const auto place = static_cast<int>(calibration_place(radio));
    const std::string head = read_bytes(session, "Factory", place, kCalibrationHead);
    return {{"radio", radio.main_ifname},
            {"offset", fmt::format("{:05x}", place)},
            {"head", digits_of(head)},
            {"valid", is_calibration(head)}};
}

Outcome calibration(Session& session, const Arguments&) {
    Json rows = Json::array();
    for (const Radio& radio : radios_of(session)) rows.push_back(calibration_row(session, radio));
    const int status = session.platform.check_eeprom();
    return {{{"calibration", rows}, {"valid", status == 0}}, status == 0 ? kGood : kFailed};
}

// A file of the caller's machine is brought onto the board first.
Outcome install(Session& session, const Arguments& arguments) {
    std::string path = arguments.text("FILE");
    if (!path.empty() && session.is_virtual) {
        board::write_text(kUploaded, session.folders.read(path));
        path = kUploaded;
    }
    const Step step =
        session.perform(session.platform.install_eeprom, path.empty() ? nullptr : path.c_str());
    if (step.result != 0) throw Failed("the image is refused, Factory is as it was");
    session.perform(session.platform.extract_eeprom);
    return calibration(session, arguments);
}

}  // namespace

Verbs flash_verbs() {
    return {
        Verb("flash list*", "The flash partitions.", "flash\nflash list --json", list),
        Verb("flash read", "Reads a partition, as hexadecimal lines or into a file.",
             "flash read Factory --offset 0x8000 --length 16\nflash read Factory --output "
             "factory.bin",
             read,
             {{"PARTITION", Kind::required, "as \"flash list\" names it"},
              {"--offset", Kind::number, "first byte, 0 when not given"},
              {"--length", Kind::number, "256 when not given, the whole partition with --output"},
              {"--output", Kind::text, "file that takes the bytes"}}),
        Verb("env get*", "Boot variables; the board's own when none is named.",
             "env\nenv get ethaddr", get_variables, {{"NAME", Kind::texts, "variables"}}),
        Verb("env set", "Sets a boot variable, or removes it with an empty value.",
             "env set bootdelay 5", set_variable,
             {{"NAME", Kind::required, "variable"},
              {"VALUE", Kind::required, "its value", kOrEmpty}}),
        Verb("calibration show*", "Whether the radios' calibration data is there.", "calibration",
             calibration),
        Verb("calibration install",
             "Writes calibration data, the default image when no file is named.",
             "calibration install\ncalibration install factory.bin", install,
             {{"FILE", Kind::positional, "an image"}}),
    };
}

}  // namespace boardctl
