// See the header.
#include "sweep/SheetPicture.h"

#include <array>
#include <commctrl.h>

namespace sweep {
namespace {

using support::DialogDriver;

std::string ClassOf(HWND window)
{
    std::array<char, 64> name{};
    GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

std::string ContentOf(const DialogDriver& page, HWND control)
{
    const int id = GetDlgCtrlID(control);
    const std::string kind = ClassOf(control);
    std::string content = support::WindowText(control);
    if (kind == "Button")
        content += ", " + std::to_string(support::SendWithin(control, BM_GETCHECK));
    if (kind == "ListBox" || kind == "ComboBox")
        content += ", " + testing::PrintToString(page.Items(id)) + std::to_string(page.Selection(id));
    return content + (page.IsEnabled(id) ? "" : ", disabled") + (page.IsVisible(id) ? "" : ", hidden");
}

bool HasSheet(const support::AppletHost& host)
{
    for (const HWND window : host.Thread().Windows()) {
        if (FindWindowExA(window, nullptr, WC_TABCONTROLA, nullptr) != nullptr)
            return true;
    }
    return false;
}

} // namespace

Picture LookAtSheet(const support::AppletHost& host)
{
    Picture picture;
    if (host.HasEnded() || !HasSheet(host))
        return picture;
    const DialogDriver page = host.ActivePage();
    picture["title"] = host.Sheet().Title();
    picture["tabs"] = testing::PrintToString(host.Tabs()) + host.ActiveTab();
    HWND control = nullptr;
    while ((control = FindWindowExA(page.Window(), control, nullptr, nullptr)) != nullptr)
        picture["control " + std::to_string(GetDlgCtrlID(control)) + " " + ClassOf(control)] +=
            ContentOf(page, control);
    return picture;
}

} // namespace sweep
