#pragma once

#include "render/InternTable.h"
#include "render/TextStyle.h"

// What the numbers in a ChatText stand for.
struct AttributeTables
{
    InternTable<TextStyle> styles;
    InternTable<InlinePicture> pictures;
};
