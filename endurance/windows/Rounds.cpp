#include "com/Bridge.h"
#include "endurance/Endurance.h"
#include "tests/support/Scratch.h"
#include "tests/windows/Session.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace endurance {
namespace {

using support::RealUser;

/// What a process may lose bit by bit.
struct Holdings {
    long handles = 0;
    long windows = 0;    ///< of the thread, those inside others too
    long kept = 0;       ///< windows, menus, fonts, brushes and images by the module's own count
    long references = 0; ///< to the host's connection
    long bytes = 0;      ///< in use in the process's heap
};

long countWindows() {
    long count = 0;
    const auto counts = [](HWND, LPARAM counter) CALLBACK -> BOOL {
        ++*reinterpret_cast<long*>(counter);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), counts, reinterpret_cast<LPARAM>(&count));
    EnumChildWindows(GetDesktopWindow(), counts, reinterpret_cast<LPARAM>(&count));
    return count;
}

/// The system's own list of all handles, as the count of one process is not kept everywhere.
long countHandles() {
    using Query = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
    struct Entry { // SYSTEM_HANDLE_TABLE_ENTRY_INFO
        USHORT process, trace;
        UCHAR type, attributes;
        USHORT handle;
        void* object;
        ULONG access;
    };
    constexpr ULONG kHandles = 16; ///< SystemHandleInformation
    constexpr LONG kTooSmall = LONG(0xC0000004);
    static const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<char> answer(1 << 16);
    LONG status;
    while ((status = query(kHandles, answer.data(), static_cast<ULONG>(answer.size()), nullptr)) == kTooSmall)
        answer.resize(2 * answer.size());
    if (status < 0) throw std::runtime_error("The system does not list its handles");
    const auto count = *reinterpret_cast<const ULONG*>(answer.data());
    const auto* entries = reinterpret_cast<const Entry*>(answer.data() + sizeof(void*));
    return static_cast<long>(std::count_if(entries, entries + count, [](const Entry& entry) {
        return entry.process == static_cast<USHORT>(GetCurrentProcessId());
    }));
}

long heapBytes() {
    long long bytes = 0;
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    for (DWORD i = 0; i < count; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        HeapUnlock(heaps[i]);
    }
    return static_cast<long>(bytes);
}

/// The numbers after the log's last "alive", added up; -1 where the module never said it.
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

Holdings holdings(const automation::ObjectPtr& connection) {
    const com::ComPtr<IDispatch> dispatch = com::toDispatch(connection);
    dispatch->AddRef();
    const auto references = static_cast<long>(dispatch->Release());
    return {countHandles(), countWindows(), keptByTheModule(), references, heapBytes()};
}

/// Labels on the thread's windows now.
int countLabels(DWORD thread) {
    int count = 0;
    EnumThreadWindows(
        thread,
        [](HWND top, LPARAM counter) CALLBACK -> BOOL {
            for (HWND label = nullptr; (label = FindWindowExW(top, label, L"Static", nullptr)) != nullptr;)
                if (SendMessageW(label, WM_GETFONT, 0, 0)) ++*reinterpret_cast<int*>(counter);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
}

/// Bytes that the system itself loses with each label that had a font, of the kind that the DLL has; Wine does.
double lostPerLabel() {
    ACTCTXW styles{};
    styles.cbSize = sizeof styles;
    styles.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    styles.hModule = GetModuleHandleW(L"goodsreq.dll");
    styles.lpResourceName = MAKEINTRESOURCEW(2);
    ULONG_PTR cookie = 0;
    ActivateActCtx(CreateActCtxW(&styles), &cookie);
    constexpr int kLabels = 100;
    long before = 0;
    for (int i = -kLabels; i < kLabels; ++i) {
        if (i == 0) before = heapBytes();
        HWND label = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), 0);
        DestroyWindow(label);
    }
    DeactivateActCtx(0, cookie);
    return static_cast<double>(heapBytes() - before) / kLabels;
}

/// One round by keys.
void entersAndLeaves(RealUser& user, const std::string& barcode, const std::function<void()>& deepest) {
    user.awaits("active frmMaster");
    beginsRequest(user);
    beginsLines(user);
    entersLine(user, barcode);
    deepest();
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
    const DWORD thread = GetCurrentThreadId();
    int labels = 0;
    Holdings first, middle;
    for (int round = 1; round <= rounds; ++round) {
        {
            const automation::ObjectPtr module = support::makeModule(connection, 1);
            RealUser::sits(
                [&] { module->call("Show"); },
                [&](RealUser& user) { entersAndLeaves(user, barcode, [&] { labels = countLabels(thread); }); });
        }
        if (round == warm) first = holdings(connection);
        if (round == (warm + rounds) / 2) middle = holdings(connection);
    }
    const Holdings last = holdings(connection);
    const double system = (labels + 1) * lostPerLabel(); // one is the text of the message box
    const double lost = static_cast<double>(last.bytes - first.bytes) / (rounds - warm);
    std::printf(
        "%ld handles, %ld windows, %ld references, %ld bytes in use; %.0f bytes lost a round, %.0f of them by the "
        "system for %d labels\n",
        last.handles, last.windows, last.references, last.bytes, lost, system, labels);
    const std::string among = "after " + std::to_string(rounds) + " rounds";
    const auto more = [](long before, long after) { return static_cast<double>(std::max(0L, after - before)); };
    report.add({"rounds: what the module made and did not destroy", static_cast<double>(last.kept), 0, among});
    report.add({"rounds: windows more than at first", more(first.windows, last.windows), 0, among});
    // A lock keeps a handle from the first time that two threads met at it: what is lost is lost again and again.
    const double lostHandles = std::min(more(first.handles, middle.handles), more(middle.handles, last.handles));
    report.add({"rounds: handles more in each half", lostHandles, 0, among});
    report.add(
        {"rounds: references to the connection more than at first", more(first.references, last.references), 0, among});
    report.add({"rounds: memory more than at first", std::max(0.0, lost - system), 8, "bytes a round"});
}

} // namespace endurance
