#include "ui/date_time_picker.h"

#include <commctrl.h>

#include <chrono>

#include "platform/program_error.h"
#include "platform/raise.h"

namespace tidemark {
namespace {

// The system's own conversions accept days that no month has on some systems.
bool IsReal(const PickedDateTime& value) {
    const std::chrono::year_month_day date{std::chrono::year(value.year),
                                           std::chrono::month(static_cast<unsigned>(value.month)),
                                           std::chrono::day(static_cast<unsigned>(value.day))};
    const auto within = [](int part, int end) { return part >= 0 && part < end; };
    // The years that the system's times can express.
    return value.year >= 1601 && value.year <= 30827 && date.ok() && within(value.hour, 24) &&
           within(value.minute, 60) && within(value.second, 60);
}

PickedDateTime FromSystem(const SYSTEMTIME& time) {
    return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

}  // namespace

PickedDateTime LocalNow() {
    SYSTEMTIME time;
    ::GetLocalTime(&time);
    return FromSystem(time);
}

void DateTimePicker::Create(ControlSite& site, Kind kind, const ControlSpec& spec) {
    ControlSpec own = spec;
    own.style |= WS_TABSTOP;
    own.style |= static_cast<DWORD>(kind == Kind::kTime ? DTS_TIMEFORMAT : DTS_SHORTDATEFORMAT);
    CreateChild(site, DATETIMEPICK_CLASSW, own);
}

void DateTimePicker::TakeOverTypedDigits() const {
    if (!dropped_down_ && HasFocus()) {
        Send(WM_KILLFOCUS);
        Send(WM_SETFOCUS);
    }
}

PickedDateTime DateTimePicker::Value() const {
    SYSTEMTIME time{};
    Send(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
    return FromSystem(time);
}

void DateTimePicker::SetValue(const PickedDateTime& value) {
    SYSTEMTIME time{};
    if (IsReal(value)) {
        time.wYear = static_cast<WORD>(value.year);
        time.wMonth = static_cast<WORD>(value.month);
        time.wDay = static_cast<WORD>(value.day);
        time.wHour = static_cast<WORD>(value.hour);
        time.wMinute = static_cast<WORD>(value.minute);
        time.wSecond = static_cast<WORD>(value.second);
    }
    if (time.wDay == 0 ||
        Send(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time)) == 0) {
        throw ProgramError(error_number::kInvalidArgument, "The picker cannot show this time.");
    }
}

std::optional<LRESULT> DateTimePicker::OnNotify(NMHDR& header) {
    switch (header.code) {
        case DTN_DROPDOWN:
            dropped_down_ = true;
            return 0;
        case DTN_CLOSEUP:
            dropped_down_ = false;
            return 0;
        case DTN_DATETIMECHANGE:
            typing_ = false;
            Raise(on_change);
            return 0;
        default:
            return std::nullopt;
    }
}

LRESULT DateTimePicker::OnOwnMessage(const WatchedMessage& message) {
    if (message.message == WM_CHAR && message.wparam >= '0' && message.wparam <= '9') {
        typing_ = true;
    } else if (message.message == WM_KILLFOCUS) {
        typing_ = false;
    }
    return message.PassOn();
}

}  // namespace tidemark
