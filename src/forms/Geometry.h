// Places and sizes of forms and controls, in twips: 1440 to the inch, 15 to a pixel at 96 dots per inch.
#pragma once

namespace forms {

/// No place or size is further off; sums of a few stay numbers. A window reaches about as far.
constexpr int kFarthestTwips = 500'000;

constexpr int withinTwips(int twips) {
    return twips < -kFarthestTwips ? -kFarthestTwips : twips > kFarthestTwips ? kFarthestTwips : twips;
}

struct Rect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    int right() const { return left + width; }
    int bottom() const { return top + height; }
    bool operator==(const Rect&) const = default;
};

/// Which edges of its form a control follows when the form grows. With both opposite edges it stretches.
struct Anchor {
    bool left = true;
    bool top = true;
    bool right = false;
    bool bottom = false;
};

} // namespace forms
