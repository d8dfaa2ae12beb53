#pragma once

// Window measures are given in twips, a twentieth of a point: 15 make one logical pixel.
inline constexpr int twipsPerPixel = 15;

constexpr int toPixels(int twips)
{
    return twips / twipsPerPixel;
}

constexpr int toTwips(int pixels)
{
    return pixels * twipsPerPixel;
}
