// Numbered objects of the driver, byte for byte as the kernel gets them, and UUID texts.
#include <algorithm>

#include "platform/wps.h"
#include "tests/support/driver.h"

namespace {

using Bytes = std::array<uint8_t, 32>;
using Requests = std::vector<Bytes>;

class DriverObject : public harness::Driver {
protected:
    ~DriverObject() override { EXPECT_EQ("", taken()); }
    // The interface, and the length and the flags behind the pointer.
    static Bytes request(std::string_view ifname, std::initializer_list<uint8_t> end) {
        Bytes bytes = {};
        std::ranges::copy(ifname, bytes.begin());
        std::ranges::copy(end, bytes.begin() + 24);
        return bytes;
    }
};

TEST_F(DriverObject, IsSetFromACopyOfThePayload) {
    objects["ra0 8ef0"];
    const std::string element("abcdefghijklmnopqrstuvwxyz\0\1\2\3\4", 32);
    EXPECT_EQ(0, wsc_set_oid("ra0", 0x0EF0, element.c_str(), 32));
    EXPECT_EQ(element, payload);
    EXPECT_EQ(0, wsc_set_oid("ra0", 0x0EF0, nullptr, 32));
    EXPECT_EQ(std::string(32, '\0'), payload);
    EXPECT_EQ(Requests(2, request("ra0", {0x20, 0x00, 0xF0, 0x8E})), requests);
}

TEST_F(DriverObject, IsReadIntoTheBufferOfTheCaller) {
    objects["rai0 0974"] = "\x5A\x14";
    char answer[4] = {9, 9, 9, 9};
    uint32_t length = 99;
    EXPECT_EQ(0, wsc_get_oid("rai0", 0x0974, answer, &length));
    EXPECT_EQ(2u, length);
    EXPECT_EQ(0, memcmp(answer, "\x5A\x14\x09\x09", 4));
    EXPECT_EQ(Requests{request("rai0", {0, 0, 0x74, 0x09})}, requests);
}

TEST_F(DriverObject, GivesTheSurveyTextAndItsLength) {
    survey = "Ch SSID\n";
    char text[] = "xxxxxxxxxxxx";
    EXPECT_EQ(8, wireless_get_scan_buf("ra0", text, 12));
    EXPECT_STREQ("Ch SSID\nxxxx", text);
    EXPECT_EQ(Requests{request("ra0", {12})}, requests);
    survey_length = 65535;
    EXPECT_EQ(65535, wireless_get_scan_buf("ra0", text, 12));
}

// The kernel's fields have no room for more, nor for a terminator.
TEST_F(DriverObject, HasANameOfAtMost16Characters) {
    const std::string name = "interface-name-of-many";
    on_ioctl[0x8933] = [&](void* request) {
        return memcmp(request, name.data(), 15) == 0 ? 0 : -1;
    };
    for (const size_t length : {15u, 16u, 17u}) {
        objects.clear();
        objects[name.substr(0, std::min<size_t>(length, 16)) + " 0752"] = word(1);
        char answer[4];
        EXPECT_EQ(0, wsc_get_oid(name.substr(0, length).c_str(), 0x0752, answer, nullptr));
    }
}

TEST_F(DriverObject, FailsWithNothingWritten) {
    char buffer[] = "untouched";
    uint32_t length = 99;
    const auto expect_failure = [&](const char* ifname, char* data, int size = 4) {
        EXPECT_EQ(-1, wsc_get_oid(ifname, 0x0752, data, &length));
        EXPECT_EQ(-1, wireless_get_scan_buf(ifname, data, 9));
        EXPECT_EQ(-1, wsc_set_oid(ifname, 0x0752, data, size));
    };
    for (const char* ifname : {"", "ra9", "eth0/", static_cast<const char*>(nullptr)})
        expect_failure(ifname, buffer);
    for (const int size : {65536, -1}) expect_failure("ra0", nullptr, size);
    fail_nth("malloc", 1);
    EXPECT_EQ(-1, wsc_set_oid("ra0", 0x0752, buffer, 4));
    EXPECT_EQ(Requests{}, requests);
    EXPECT_EQ(-1, wsc_get_oid("ra0", 0x0752, buffer, &length));  // the driver's own refusals
    EXPECT_EQ(-1, wsc_set_oid("ra0", 0x0752, buffer, 4));
    EXPECT_EQ(0, wireless_get_scan_buf("ra0", buffer, 9));
    EXPECT_STREQ("untouched", buffer);
    EXPECT_EQ(99u, length);
}

TEST_F(DriverObject, HoldsThePinAndTheUuid) {
    objects["ra0 0752"] = word(12345670);
    objects["ra0 0753"] = "0123456789abcdef";
    objects["ra0 8753"];
    EXPECT_EQ(12345670, wireless_get_wps_pincode("ra0"));
    uint8_t uuid[16] = {};
    uint32_t length = 0;
    EXPECT_EQ(0, wireless_get_wps_uuid("ra0", uuid, &length));
    EXPECT_EQ(16u, length);
    EXPECT_EQ(0, wireless_set_wps_uuid("ra0", uuid, 16));
    EXPECT_EQ("0123456789abcdef", payload);
    for (const int result :
         {wireless_get_wps_pincode("rai0"), wireless_get_wps_pincode(nullptr),
          wireless_get_wps_uuid("rai0", uuid, &length), wireless_set_wps_uuid("rai0", uuid, 16)})
        EXPECT_EQ(-1, result);
}

using Uuid = std::array<uint8_t, 16>;

constexpr Uuid kUuid = {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0,
                        0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0};
const std::string kText = "12345678-9abc-DEF0-1234-56789abcdef0";

TEST(Uuid, IsReadFromFiveGroups) {
    for (const std::string& text : harness::Lines{kText, "-" + kText + std::string(90, '7'),
                                                  "1-2-3-4-56789abcdef0123456789abcdef0",
                                                  "123456789abcdef0--123456789abc--d-e---f0"}) {
        Uuid uuid = {};
        EXPECT_EQ(0, trans_uuid_str_to_hex(text.c_str(), uuid.data()));
        EXPECT_EQ(kUuid, uuid) << text;
    }
}

TEST(Uuid, IsLeftAloneByOtherTexts) {
    for (const std::string& text : harness::Lines{"", kText.substr(0, 23), kText.substr(0, 24),
                                                  "-----", kText + std::string(92, '7')}) {
        Uuid uuid = kUuid;
        EXPECT_EQ(-1, trans_uuid_str_to_hex(text.c_str(), uuid.data())) << text;
        EXPECT_EQ(kUuid, uuid);
    }
}

TEST(Uuid, PairsAreHexadecimalOfEitherCase) {
    EXPECT_EQ(0, convert_2byte_hex(""));
    for (const auto& [text, value] :
         harness::rows<std::string, int>("00 0  fF 255  a1b2 161  0g 0  0x1 0"))
        EXPECT_EQ(value, convert_2byte_hex(text.c_str())) << text;
}

}  // namespace
