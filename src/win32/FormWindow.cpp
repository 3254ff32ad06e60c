#include "win32/FormWindow.h"

#include "forms/UserInput.h"
#include "win32/Guard.h"
#include "win32/OwnModule.h"
#include "win32/Text.h"
#include "win32/WindowLog.h"

#include <algorithm>

namespace win32 {
namespace {

constexpr wchar_t kClassName[] = L"GoodsreqForm";

/// Has the modal loop look again. A loop of the system's that moves the window by keys, from the window's menu, ends
/// with this too; once the window has gone, nothing else would reach it.
constexpr UINT kLookAgain = WM_LBUTTONUP;

ATOM registerClass(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = procedure;
    description.hInstance = ownModule();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kClassName;
    return RegisterClassExW(&description);
}

DWORD styleOf(const forms::Form& form) {
    const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    return form.resizable() ? style | WS_THICKFRAME | WS_MAXIMIZEBOX : style;
}

DWORD exStyleOf(const forms::Form& form) { return form.resizable() ? 0 : WS_EX_DLGMODALFRAME; }

bool highContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

} // namespace

RECT workAreaOf(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

COLORREF colourOf(std::int32_t colour, int systemColour) {
    if (colour == forms::kSystemColour) return GetSysColor(systemColour);
    if (colour < 0) return GetSysColor(colour & 0xFF);
    return static_cast<COLORREF>(colour & 0xFFFFFF);
}

bool systemColoursHold() {
    const COLORREF ground = GetSysColor(COLOR_WINDOW);
    constexpr int kMiddle = 3 * 128;
    return GetRValue(ground) + GetGValue(ground) + GetBValue(ground) < kMiddle || highContrast();
}

FormWindow::FormWindow(forms::Form& form, HWND owner, HWND around, const bool& hourglass)
    : form_(form), hourglass_(hourglass) {
    static const ATOM windowClass = registerClass(&FormWindow::procedure);
    owned_ = OwnedWindow(CreateWindowExW(exStyleOf(form), MAKEINTATOM(windowClass), wide(form.caption()).c_str(),
                                         styleOf(form), 0, 0, 100, 100, owner, nullptr, ownModule(), this));
    if (!owned_.get()) throw automation::RunTimeError(7, "The window could not be created");
    dpi_ = Dpi::of(window_);
    font_ = std::make_unique<DialogFont>(dpi_);
    toolTips_ = std::make_unique<ToolTips>(window_);
    showIcon();
    placeInMiddle(around);
    createControls();
    form_.attach(this);
    resized(); // where the screen is smaller than the design
    // Focus and mnemonics are always shown: this is a program for the keyboard.
    SendMessageW(window_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL), 0);
}

FormWindow::~FormWindow() {
    leaveModel();
    modality_.reset();
    owned_ = {}; // The controls' objects live until their windows have had their last message.
}

bool FormWindow::owns(HWND window) {
    wchar_t name[32];
    HWND root = window ? GetAncestor(window, GA_ROOT) : nullptr;
    return root && GetClassNameW(root, name, 32) > 0 && lstrcmpW(name, kClassName) == 0;
}

void FormWindow::createControls() {
    for (forms::Control* control : form_.controls()) {
        // Screen readers call a control by the label before it, and do not mind whether that is seen.
        if (!control->readAs().empty())
            CreateWindowExW(0, L"STATIC", wide(control->readAs()).c_str(), WS_CHILD, 0, 0, 0, 0, window_, nullptr,
                            ownModule(), nullptr);
        controls_.push_back(makeControlWindow(*this, *control));
    }
    // Frames lie behind what stands in them.
    for (const auto& control : controls_)
        if (control->control().kind() == forms::ControlKind::frame)
            SetWindowPos(control->handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

SIZE FormWindow::designedSize() const {
    return outerSize({dpi_.pixels(designed_.cx), dpi_.pixels(designed_.cy)}, styleOf(form_), exStyleOf(form_), dpi_);
}

SIZE FormWindow::fittingSize(const RECT& work) const {
    const SIZE size = designedSize();
    if (!form_.resizable()) return size;
    return {std::min(size.cx, work.right - work.left), std::min(size.cy, work.bottom - work.top)};
}

// Of the module that the windows come from; a program of tests has none, and gets the system's.
void FormWindow::showIcon() {
    const auto load = [&](int twips) {
        const int size = dpi_.pixels(twips);
        return OwnedIcon(static_cast<HICON>(LoadImageW(ownModule(), MAKEINTRESOURCEW(1), IMAGE_ICON, size, size, 0)));
    };
    icon_ = load(480);
    smallIcon_ = load(240);
    SendMessageW(window_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon_.get()));
    SendMessageW(window_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.get()));
}

void FormWindow::placeInMiddle(HWND around) {
    designed_ = {form_.width(), form_.height()};
    const RECT work = workAreaOf(around ? around : window_);
    const SIZE size = fittingSize(work);
    RECT outer = work;
    if (around && IsWindowVisible(around) && !IsIconic(around)) GetWindowRect(around, &outer);
    const auto middle = [](LONG low, LONG high, LONG extent, LONG first, LONG last) {
        return std::max(first, std::min((low + high - extent) / 2, last - extent));
    };
    sizing_ = true;
    SetWindowPos(window_, nullptr, middle(outer.left, outer.right, size.cx, work.left, work.right),
                 middle(outer.top, outer.bottom, size.cy, work.top, work.bottom), size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    sizing_ = false;
}

void FormWindow::show() {
    modality_ = std::make_unique<Modality>(window_);
    // Not by ShowWindow: the first one of a process that was started hidden hides.
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOSIZE);
    SetForegroundWindow(window_);
    restoreFocus();
    UpdateWindow(window_);
}

void FormWindow::comeForward() {
    HWND active = GetActiveWindow();
    HWND top = IsWindowEnabled(window_) ? window_ : GetLastActivePopup(window_);
    if (!IsWindowEnabled(top)) return; // A form above this one comes.
    if (active && IsWindowEnabled(active))
        SetWindowPos(top, active, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    else
        SetForegroundWindow(top);
}

void FormWindow::announce() {
    announced_ = true;
    if (alive_) logWindow("active", form_.name());
}

ControlWindow* FormWindow::windowOf(HWND control) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const auto& c) {
        return control && (c->handle() == control || IsChild(c->handle(), control));
    });
    return found == controls_.end() ? nullptr : found->get();
}

HBRUSH FormWindow::brush(COLORREF colour) {
    const auto found =
        std::find_if(brushes_.begin(), brushes_.end(), [&](const auto& entry) { return entry.first == colour; });
    if (found != brushes_.end()) return found->second.get();
    brushes_.emplace_back(colour, CreateSolidBrush(colour));
    return brushes_.back().second.get();
}

COLORREF FormWindow::backgroundOf(const forms::Control& control) const {
    if (systemColoursHold()) return GetSysColor(COLOR_BTNFACE);
    const forms::Rect& inner = control.bounds();
    for (const forms::Control* other : form_.controls()) {
        if (other == &control || other->kind() != forms::ControlKind::frame || !other->visible()) continue;
        const forms::Rect& outer = other->bounds();
        const bool inside = inner.left >= outer.left && inner.top >= outer.top && inner.right() <= outer.right() &&
                            inner.bottom() <= outer.bottom();
        if (inside && other->backColor() != forms::kSystemColour) return colourOf(other->backColor(), COLOR_BTNFACE);
    }
    return colourOf(form_.backColor(), COLOR_BTNFACE);
}

void FormWindow::focusArrived(ControlWindow& control) {
    if (!alive_) return;
    forms::Control& model = control.control();
    if (form_.activeControl() != &model && !forms::input::focus(model) && alive_) restoreFocus();
    if (alive_ && form_.activeControl() == &model && windowOf(GetFocus()) == &control)
        logWindow("focus", form_.name() + "." + model.name());
}

void FormWindow::restoreFocus() {
    forms::Control* active = alive_ ? form_.activeControl() : nullptr;
    for (const auto& control : controls_)
        if (&control->control() == active) return control->takeFocus();
    if (GetFocus() != window_) SetFocus(window_);
}

void FormWindow::refreshLater(ControlWindow& control) {
    if (alive_) PostMessageW(window_, kRefresh, 0, reinterpret_cast<LPARAM>(&control));
}

void FormWindow::captionChanged() { SetWindowTextW(window_, wide(form_.caption()).c_str()); }

void FormWindow::sizeChanged() {
    designed_ = {form_.width(), form_.height()};
    if (IsZoomed(window_)) return resized();
    const SIZE size = fittingSize(workAreaOf(window_));
    sizing_ = true;
    SetWindowPos(window_, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    sizing_ = false;
}

void FormWindow::coloursChanged() {
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void FormWindow::focusChanged(forms::Control&) {
    // A message box or another form may have the keyboard; the focus returns with the activation then.
    if (GetActiveWindow() == window_) restoreFocus();
}

void FormWindow::leaveModel() {
    alive_ = false;
    if (form_.view() == this) form_.attach(nullptr);
    for (const auto& control : controls_)
        if (control->control().view() == control.get()) control->control().attach(nullptr);
}

void FormWindow::formUnloaded() {
    leaveModel();
    modality_.reset();
    ShowWindow(window_, SW_HIDE);
    PostMessageW(window_, kLookAgain, 0, 0);
    logWindow("unloaded", form_.name());
}

void FormWindow::destroyed() {
    leaveModel();
    modality_.reset();
    PostThreadMessageW(GetCurrentThreadId(), kLookAgain, 0, 0);
    logWindow("unloaded", form_.name());
}

void FormWindow::resized() {
    if (sizing_ || !alive_ || form_.view() != this || IsIconic(window_)) return;
    RECT inside{};
    GetClientRect(window_, &inside);
    form_.resized(dpi_.twips(inside.right), dpi_.twips(inside.bottom));
    InvalidateRect(window_, nullptr, TRUE);
}

void FormWindow::dpiChanged(Dpi dpi, const RECT* suggested) {
    dpi_ = dpi;
    auto former = std::move(font_);
    font_ = std::make_unique<DialogFont>(dpi_);
    sizing_ = true;
    SetWindowPos(window_, nullptr, suggested->left, suggested->top, suggested->right - suggested->left,
                 suggested->bottom - suggested->top, SWP_NOZORDER | SWP_NOACTIVATE);
    sizing_ = false;
    // A frame that the person dragged or maximised keeps the size that the system scaled it to.
    if (form_.resizable())
        resized();
    else
        sizeChanged();
    for (const auto& control : controls_) control->fontChanged();
    showIcon();
    keepOnScreen();
}

void FormWindow::keepOnScreen() {
    if (IsZoomed(window_) || IsIconic(window_)) return;
    const RECT work = workAreaOf(window_);
    RECT now{};
    GetWindowRect(window_, &now);
    SIZE size{now.right - now.left, now.bottom - now.top};
    if (form_.resizable())
        size = {std::min(size.cx, work.right - work.left), std::min(size.cy, work.bottom - work.top)};
    const LONG left = std::max(work.left, std::min(now.left, work.right - size.cx));
    const LONG top = std::max(work.top, std::min(now.top, work.bottom - size.cy));
    SetWindowPos(window_, nullptr, left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace win32
