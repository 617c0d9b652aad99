#pragma once

namespace tidemark {

// A local date and time of day, as a picker shows it. Window-free.
struct PickedDateTime {
    int year = 1601;
    int month = 1;  // 1 to 12
    int day = 1;    // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
    friend bool operator==(const PickedDateTime&, const PickedDateTime&) = default;
};

}  // namespace tidemark
