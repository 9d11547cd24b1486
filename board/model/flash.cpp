#include "board/model/flash.h"

#include <algorithm>
#include <sstream>

#include "board/store/store.h"

namespace board {
namespace {

constexpr char kErased = '\xff';

// mtd1: 00020000 00020000 "Config"
std::optional<Partition> parse_partition(const std::string& line) {
    std::istringstream fields(line);
    Partition partition{};
    std::string device;
    std::string name;
    fields >> device >> std::hex >> partition.size >> partition.erase_size >> name;
    if (!fields || partition.erase_size == 0 || name.size() < 2) return std::nullopt;
    partition.device = "/dev/" + device.substr(0, device.size() - 1);
    partition.name = name.substr(1, name.size() - 2);
    return partition;
}

}  // namespace

std::vector<Partition> partitions() {
    std::vector<Partition> list;
    std::istringstream table(read_text("/proc/mtd").value_or(""));
    for (std::string line; std::getline(table, line);)
        if (const auto partition = parse_partition(line)) list.push_back(*partition);
    return list;
}

std::optional<Partition> find_partition(std::string_view name) {
    for (const Partition& partition : partitions())
        if (partition.name == name) return partition;
    return std::nullopt;
}

std::string read_partition(const Partition& partition) {
    std::string content = read_text(partition.device).value_or("");
    content.resize(partition.size, kErased);
    return content;
}

bool write_partition(const Partition& partition, std::string_view data) {
    if (data.size() > partition.size) return false;
    std::string content(data);
    const size_t blocks = (data.size() + partition.erase_size - 1) / partition.erase_size;
    content.resize(std::min<size_t>(blocks * partition.erase_size, partition.size), kErased);
    content += read_partition(partition).substr(content.size());
    return replace_text(partition.device, content);
}

BootEnvironment BootEnvironment::parse(std::string_view image) {
    BootEnvironment environment;
    while (!image.empty() && image.front() != kErased) {
        const std::string_view variable = image.substr(0, image.find('\0'));
        const size_t equals = variable.find('=');
        if (variable.empty() || equals == std::string_view::npos) break;
        environment.set(variable.substr(0, equals), variable.substr(equals + 1));
        image.remove_prefix(std::min(variable.size() + 1, image.size()));
    }
    return environment;
}

std::string BootEnvironment::image() const {
    std::string text;
    for (const auto& [name, value] : variables_)
        text.append(name).append("=").append(value).append(1, '\0');
    return text + '\0';
}

std::optional<std::string> BootEnvironment::get(std::string_view name) const {
    for (const auto& [known, value] : variables_)
        if (known == name) return value;
    return std::nullopt;
}

void BootEnvironment::set(std::string_view name, std::string_view value) {
    const auto known =
        std::find_if(variables_.begin(), variables_.end(),
                     [name](const auto& variable) { return variable.first == name; });
    if (value.empty()) {
        if (known != variables_.end()) variables_.erase(known);
    } else if (known != variables_.end()) {
        known->second = value;
    } else {
        variables_.emplace_back(name, value);
    }
}

}  // namespace board
