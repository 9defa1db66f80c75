/// @file
/// Time zones in tests.

#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace testing_support {

/// The time zone of the process, for the length of a test.
class TimeZone {
public:
    explicit TimeZone(const char* name) {
        if (const char* before = std::getenv("TZ")) m_before = before;
        setenv("TZ", name, 1);
        tzset();
    }
    ~TimeZone() {
        if (m_before)
            setenv("TZ", m_before->c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    std::optional<std::string> m_before;
};

/// Central Europe, told in full so that no zone file is needed.
inline constexpr const char* kCentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

}  // namespace testing_support
