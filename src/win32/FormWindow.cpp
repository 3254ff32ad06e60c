#include "win32/FormWindow.h"

#include "forms/UserInput.h"
#include "win32/Guard.h"
#include "win32/Module.h"
#include "win32/Text.h"
#include "win32/WindowLog.h"

#include <algorithm>

namespace win32 {
namespace {

constexpr wchar_t kClassName[] = L"GoodsreqForm";

ATOM registerClass(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = procedure;
    description.hInstance = ownModule();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    description.lpszClassName = kClassName;
    // Classes outlive their module: a host that ends COM and starts it again may load this one where it was before, and
    // find its own class there, with a procedure of then. No window is left of it.
    UnregisterClassW(kClassName, description.hInstance);
    return RegisterClassExW(&description);
}

DWORD styleOf(const forms::Form& form) {
    const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    return form.resizable() ? style | WS_THICKFRAME | WS_MAXIMIZEBOX : style;
}

DWORD exStyleOf(const forms::Form& form) { return form.resizable() ? 0 : WS_EX_DLGMODALFRAME; }

} // namespace

COLORREF colourOf(std::int32_t colour, int systemColour) {
    if (colour == forms::kSystemColour) return GetSysColor(systemColour);
    if (colour < 0) return GetSysColor(colour & 0xFF);
    return static_cast<COLORREF>(colour & 0xFFFFFF);
}

FormWindow::FormWindow(forms::Form& form, HWND owner, const bool& hourglass) : form_(form), hourglass_(hourglass) {
    static const ATOM windowClass = registerClass(&FormWindow::procedure);
    owned_ = OwnedWindow(CreateWindowExW(exStyleOf(form), MAKEINTATOM(windowClass), wide(form.caption()).c_str(),
                                         styleOf(form), 0, 0, 100, 100, owner, nullptr, ownModule(), this));
    if (!owned_.get()) throw automation::RunTimeError(7, "The window could not be created");
    dpi_ = Dpi::of(window_);
    font_ = std::make_unique<DialogFont>(dpi_);
    toolTips_ = std::make_unique<ToolTips>(window_);
    placeInMiddle(owner);
    createControls();
    form_.attach(this);
    // Focus and mnemonics are always shown: this is a program for the keyboard.
    SendMessageW(window_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL), 0);
}

FormWindow::~FormWindow() {
    leaveModel();
    giveScreenBack();
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

void FormWindow::placeInMiddle(HWND owner) {
    designed_ = {form_.width(), form_.height()};
    const SIZE size = designedSize();
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(owner ? owner : window_, MONITOR_DEFAULTTOPRIMARY), &monitor);
    const RECT& work = monitor.rcWork;
    RECT around = work;
    if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &around);
    const auto middle = [](LONG low, LONG high, LONG extent, LONG first, LONG last) {
        return std::max(first, std::min((low + high - extent) / 2, last - extent));
    };
    sizing_ = true;
    SetWindowPos(window_, nullptr, middle(around.left, around.right, size.cx, work.left, work.right),
                 middle(around.top, around.bottom, size.cy, work.top, work.bottom), size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    sizing_ = false;
}

void FormWindow::show() {
    modality_ = std::make_unique<Modality>(window_);
    ShowWindow(window_, SW_SHOW);
    SetForegroundWindow(window_);
    restoreFocus();
    UpdateWindow(window_);
}

void FormWindow::giveScreenBack() {
    modality_.reset();
    // Before this window goes: else the system would bring another program's to the front.
    HWND below = GetWindow(window_, GW_OWNER);
    if (GetActiveWindow() == window_ && below && IsWindowEnabled(below)) SetActiveWindow(below);
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
    const SIZE size = designedSize();
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
    giveScreenBack();
    ShowWindow(window_, SW_HIDE);
    PostMessageW(window_, WM_NULL, 0, 0); // The modal loop looks again.
    logWindow("unloaded", form_.name());
}

void FormWindow::destroyed() {
    leaveModel();
    modality_.reset();
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0); // The modal loop looks again.
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
}

} // namespace win32
