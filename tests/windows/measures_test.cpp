// Twips and pixels, characters and code units: what crosses the line between the module and Windows.
#include "win32/Dpi.h"
#include "win32/Text.h"

#include <gtest/gtest.h>

using namespace forms;

TEST(Resolution, TurnsTwipsIntoPixelsAndBack) {
    struct Case {
        int dpi, twips, pixels;
    };
    for (const Case& c : {Case{96, 15, 1}, {96, 330, 22}, {120, 330, 28}, {144, 330, 33}, {192, 330, 44}, {96, 0, 0}}) {
        const win32::Dpi dpi(c.dpi);
        EXPECT_EQ(dpi.pixels(c.twips), c.pixels) << c.dpi << " " << c.twips;
        // A width that a person dragged survives the way into the model and back.
        EXPECT_EQ(dpi.pixels(dpi.twips(c.pixels)), c.pixels);
    }
    // Neighbours touch at every resolution.
    for (const int value : {96, 120, 144, 168}) {
        const win32::Dpi dpi(value);
        EXPECT_EQ(dpi.pixels(Rect{100, 0, 335, 10}).right, dpi.pixels(Rect{435, 0, 50, 10}).left);
    }
}

TEST(Text, CountsCharactersAndUnits) {
    const std::wstring text = L"a\xD83D\xDE00z";
    EXPECT_EQ(win32::narrow(text), "a\xF0\x9F\x98\x80z");
    EXPECT_EQ(win32::wide("a\xF0\x9F\x98\x80z"), text);
    EXPECT_EQ(win32::charactersIn(text, 3), 2);
    EXPECT_EQ(win32::unitsOf(text, 2), 3);
    EXPECT_FALSE(win32::hasHalfCharacter(text));
    EXPECT_TRUE(win32::hasHalfCharacter(L"a\xD83D"));
    EXPECT_TRUE(win32::hasHalfCharacter(L"\xDE00z"));
}
