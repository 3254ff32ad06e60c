// One round after the other in one process: what of each is left.
#include "com/Bridge.h"
#include "endurance/Endurance.h"
#include "tests/support/Scratch.h"
#include "tests/windows/Session.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace endurance {
namespace {

using support::RealUser;

/// In use in the process's heaps, without what Wine loses with each label that had a font: a block of this size in the
/// system's own heap.
long heapBytes() {
    constexpr DWORD kLostWithLabels = 3 * sizeof(void*);
    long long bytes = 0;
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    for (DWORD i = 0; i < count; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY &&
                (heaps[i] != GetProcessHeap() || entry.cbData != kLostWithLabels))
                bytes += entry.cbData;
        HeapUnlock(heaps[i]);
    }
    return static_cast<long>(bytes);
}

/// Windows, menus, fonts, brushes and images by the module's own count: the numbers after the log's last "alive", added
/// up; -1 where the module never said it.
long keptByTheModule() {
    const std::string log = support::readAll(support::logFile());
    const std::size_t at = log.rfind("alive ");
    if (at == std::string::npos) return -1;
    std::istringstream words(log.substr(at + 6, log.find('\n', at) - at - 6));
    long sum = 0;
    std::string kind;
    for (long count; words >> kind >> count;) sum += count;
    return sum;
}

long references(const automation::ObjectPtr& connection) {
    const com::ComPtr<IDispatch> dispatch = com::toDispatch(connection);
    dispatch->AddRef();
    return static_cast<long>(dispatch->Release());
}

/// One round by keys.
void entersAndLeaves(RealUser& user, const std::string& barcode) {
    user.awaits("active frmMaster");
    beginsRequest(user);
    beginsLines(user);
    entersLine(user, barcode);
    user.sendsKey(VK_ESCAPE, "unloaded frmRequestDetail");
    user.sendsAlt('c');
    user.answers("Save Changes?", IDNO);
    user.awaits("unloaded frmRequest");
    closesRegister(user);
}

} // namespace

void goRound(const Options& options, Report& report) {
    const int rounds = options.quick ? 25 : 1000;
    const int warm = rounds / 5; ///< by then all that is made once has been made
    const automation::ObjectPtr connection = support::openConnection(support::sampleCompany("rounds.db"));
    const std::string barcode = support::requestableBarcodes(*connection).front();
    long bytes = 0, held = 0;
    for (int round = 1; round <= rounds; ++round) {
        {
            const automation::ObjectPtr module = support::makeModule(connection, 1);
            RealUser::sits([&] { module->call("Show"); }, [&](RealUser& user) { entersAndLeaves(user, barcode); });
        }
        if (round != warm) continue;
        bytes = heapBytes();
        held = references(connection);
    }
    const std::string among = "after " + std::to_string(rounds) + " rounds";
    const double lost = static_cast<double>(heapBytes() - bytes) / (rounds - warm);
    report.add({"rounds: what the module made and did not destroy", static_cast<double>(keptByTheModule()), 0, among});
    report.add({"rounds: references to the connection more than at first",
                static_cast<double>(references(connection) - held), 0, among});
    report.add({"rounds: memory more than at first", std::max(0.0, lost), 8, "bytes a round"});
}

} // namespace endurance
