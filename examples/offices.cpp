// One server, a thread for each office, each in the time zone of its own: the same moment as the
// clocks of the offices show it, and the moment at which each opens.
//
//     offices
#include <genutil.h>

#include <cstdio>
#include <ctime>

namespace {

constexpr long kMoment = 1772976600;  // 8 March 2026, 13:30 in Greenwich

struct Office {
    const char* zone;
    char text[64];
    long opens;
};

unsigned int Work(void* argument) {
    Office* office = static_cast<Office*>(argument);
    // From here on every conversion in this thread is in its zone.
    CGNLclSt::Instance()->Init(4);
    CGNLclSt::Instance()->SetLocalVariable("timezone", const_cast<char*>(office->zone));

    CGNDateTime moment(kMoment);
    moment.FormatForDisplay(1);
    CGNString text;
    moment.GetDisplayBuffer(text);
    std::snprintf(office->text, sizeof office->text, "%s", static_cast<const char*>(text));

    std::tm nine = {};
    nine.tm_year = 2026 - 1900;
    nine.tm_mon = 3 - 1;
    nine.tm_mday = 9;
    nine.tm_hour = 9;
    nine.tm_isdst = -1;
    office->opens = CGNDateTime::MkTimeTS(&nine);
    return 0;
}

}  // namespace

int main() {
    OSSetThreaded();
    CGNDateTime::ModuleInit();
    CLCGlobalLocale::Instance()->SetLocale("en_US");
    CGNLclSt::Instance();
    OSTimeZone::GetInstance();

    Office offices[] = {{"America/New_York", {}, 0},
                        {"Europe/Berlin", {}, 0},
                        {"Asia/Kolkata", {}, 0},
                        {"Asia/Tokyo", {}, 0}};
    _osthread* threads[4];
    for (int i = 0; i < 4; ++i) threads[i] = OSThreadCreate(Work, &offices[i], nullptr);
    for (int i = 0; i < 4; ++i) {
        OSThreadTerminateWait(threads[i]);
        OSThreadDestroy(threads[i]);
        std::printf("%-18s %-22s opens in %ld minutes\n", offices[i].zone, offices[i].text,
                    (offices[i].opens - kMoment) / 60);
    }
}
