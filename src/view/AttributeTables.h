#pragma once

#include "view/InternTable.h"
#include "view/TextStyle.h"

// What the numbers in a ChatText stand for.
struct AttributeTables
{
    InternTable<TextStyle> styles;
    InternTable<InlinePicture> pictures;
};
