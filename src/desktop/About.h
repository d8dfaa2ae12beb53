#pragma once

#include "platform/Form.h"

// What the program is. Pictures and labels only.
class About final : public Form
{
    Q_OBJECT
public:
    About();
};
