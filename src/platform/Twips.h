#pragma once

// Window measures are given in twips, a twentieth of a point: 15 make one logical pixel.
inline constexpr int twipsPerPixel = 15;

constexpr int toPixels(int twips)
{
    return twips / twipsPerPixel;
}

// At least as long.
constexpr int toPixelsUp(int twips)
{
    return (twips + twipsPerPixel - 1) / twipsPerPixel;
}

constexpr int toTwips(int pixels)
{
    return pixels * twipsPerPixel;
}
