// Flash partitions as /proc/mtd lists them, and the boot environment in the "Config" partition.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace board {

struct Partition {
    std::string device;  // "/dev/mtd1"
    uint32_t size;
    uint32_t erase_size;
    std::string name;
};
std::vector<Partition> partitions();
std::optional<Partition> find_partition(std::string_view name);

std::string read_partition(const Partition& partition);

// Writes from the partition's first byte; the rest of the last block touched is erased.
bool write_partition(const Partition& partition, std::string_view data);  // false: does not fit

// Boot variables, stored as NAME=VALUE texts, each ended by a zero byte, an empty one last.
class BootEnvironment {
public:
    static BootEnvironment parse(std::string_view image);
    std::string image() const;

    std::optional<std::string> get(std::string_view name) const;
    void set(std::string_view name, std::string_view value);  // an empty value removes it

private:
    std::vector<std::pair<std::string, std::string>> variables_;
};

}  // namespace board
