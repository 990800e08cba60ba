// A small container: a window, a frame, and a site with the interfaces and ambient properties that a test gives it. It writes
// down what the control asks of it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "activex/com/Server.h"

namespace vrn::test {

class Container {
  public:
    Container();
    ~Container();
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    /// Gives the control its site, and what a container asks at first.
    void place(IUnknown* control);
    /// Loses its window, as a container does that has forgotten to deactivate the control in it, and gets another one.
    void loseWindow();
    /// Takes the control's windows and then the site away.
    void remove();
    HRESULT verb(LONG number, const MSG* message = nullptr) const;
    /// The control that the container's window shows, null while it is not active.
    [[nodiscard]] HWND controlWindow() const;
    /// A key message for the window with the focus, as the message loop of a container treats it.
    [[nodiscard]] bool translate(WPARAM key, UINT message = WM_KEYDOWN) const;
    [[nodiscard]] IUnknown* site() const noexcept;

    HWND window = nullptr;
    std::vector<std::string> calls;
    std::map<DISPID, com::Variant> ambients;
    bool hasInPlaceSite = true;
    bool allowsActivation = true;
    bool hasControlSite = true;
    HRESULT onActivate = S_OK;  ///< what OnInPlaceActivate answers
    HRESULT onUIActivate = S_OK;
    HRESULT windowContext = S_OK;  ///< what GetWindow and GetWindowContext answer
    RECT bounds{10, 10, 650, 490};
    ComPtr<IOleInPlaceActiveObject> activeObject;  ///< as the frame was told
    std::function<void(const std::string&)> whenCalled;
    std::function<void(DISPID)> whenAsked;  ///< an ambient property is read
    ComPtr<IOleObject> control;

    /// Writes a call down and lets the test act inside of it.
    void note(const std::string& call);

  private:
    class Frame;
    class Site;
    ComPtr<Frame> frame_;
    ComPtr<Site> site_;
};

}  // namespace vrn::test
