// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowLayers.h"

#include "platform/WindowRecord.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

using platform::WindowFacts;
using platform::WindowState;
using platform::WindowType;
namespace layers = platform::layers;

namespace {

struct Row
{
    std::string rule;
    WindowFacts facts;
    int layer;
};

void PrintTo(const Row& row, std::ostream* os)
{
    *os << row.rule;
}

WindowFacts facts(std::vector<WindowType> types, std::vector<WindowState> states = {},
                  bool overrideRedirect = false)
{
    return {std::move(types), std::move(states), overrideRedirect};
}

class LayerOfAWindow : public testing::TestWithParam<Row>
{};

TEST_P(LayerOfAWindow, FollowsItsKindThenItsState)
{
    EXPECT_EQ(platform::layerOf(GetParam().facts), GetParam().layer);
}

const Row kRows[] = {
    // An application's window, whatever it calls itself.
    {"no type at all is a normal window", facts({}), layers::Normal},
    {"normal", facts({WindowType::Normal}), layers::Normal},
    {"a dialog", facts({WindowType::Dialog}), layers::Normal},
    {"a utility window", facts({WindowType::Utility}), layers::Normal},
    {"a kind no rule names", facts({WindowType::Other}), layers::Normal},
    {"a state no rule names", facts({WindowType::Normal}, {WindowState::Other}), layers::Normal},
    {"hidden does not change the layer", facts({}, {WindowState::Hidden}), layers::Normal},

    // Kept above the others by the window manager.
    {"above", facts({WindowType::Normal}, {WindowState::Above}), layers::Above},
    {"above without a type", facts({}, {WindowState::Above}), layers::Above},
    {"above among other states",
     facts({WindowType::Dialog}, {WindowState::Other, WindowState::Above}), layers::Above},

    // The desktop, docks and notifications, by kind.
    {"the desktop", facts({WindowType::Desktop}), layers::Desktop},
    {"a dock", facts({WindowType::Dock}), layers::Dock},
    {"a notification", facts({WindowType::Notification}), layers::Notification},

    // Menus and other short-lived popups.
    {"a menu torn off", facts({WindowType::Menu}), layers::Popup},
    {"a drop-down menu", facts({WindowType::DropdownMenu}), layers::Popup},
    {"a context menu", facts({WindowType::PopupMenu}), layers::Popup},
    {"a tooltip", facts({WindowType::Tooltip}), layers::Popup},
    {"a combo box list", facts({WindowType::Combo}), layers::Popup},
    {"a drag icon", facts({WindowType::Dnd}), layers::Popup},
    {"unmanaged without a type", facts({}, {}, true), layers::Popup},
    {"unmanaged normal window", facts({WindowType::Normal}, {}, true), layers::Popup},

    // Where rules meet, the kind decides before the state, and the kinds
    // in a fixed order whatever order the window lists them in.
    {"the desktop stays at the bottom when asked to be above",
     facts({WindowType::Desktop}, {WindowState::Above}), layers::Desktop},
    {"a dock that is above stays a dock", facts({WindowType::Dock}, {WindowState::Above}),
     layers::Dock},
    {"a notification that is above stays a notification",
     facts({WindowType::Notification}, {WindowState::Above}), layers::Notification},
    {"a menu that is above stays a popup", facts({WindowType::PopupMenu}, {WindowState::Above}),
     layers::Popup},
    {"unmanaged and above is a popup", facts({}, {WindowState::Above}, true), layers::Popup},
    {"an unmanaged dock is a dock", facts({WindowType::Dock}, {}, true), layers::Dock},
    {"an unmanaged notification is a notification", facts({WindowType::Notification}, {}, true),
     layers::Notification},
    {"an unmanaged desktop is the desktop", facts({WindowType::Desktop}, {}, true),
     layers::Desktop},
    {"desktop before dock", facts({WindowType::Dock, WindowType::Desktop}), layers::Desktop},
    {"dock before notification", facts({WindowType::Notification, WindowType::Dock}), layers::Dock},
    {"notification before menu", facts({WindowType::Menu, WindowType::Notification}),
     layers::Notification},
    {"a popup kind anywhere in the list", facts({WindowType::Normal, WindowType::Tooltip}),
     layers::Popup},
    {"an unknown kind first does not hide a known one",
     facts({WindowType::Other, WindowType::Dock}), layers::Dock},
};

INSTANTIATE_TEST_SUITE_P(Rules, LayerOfAWindow, testing::ValuesIn(kRows));

TEST(WindowFacts, StatesAreFoundAnywhereInTheList)
{
    const WindowFacts f = facts({}, {WindowState::Other, WindowState::Hidden});
    EXPECT_TRUE(platform::hasState(f, WindowState::Hidden));
    EXPECT_FALSE(platform::hasState(f, WindowState::Above));
    EXPECT_FALSE(platform::hasState(facts({}), WindowState::Hidden));
}

} // namespace
