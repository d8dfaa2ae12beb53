#pragma once

#include "platform/Form.h"

#include <functional>

class Handlers;

// Who made the program. Labels only; Label10 leads to the makers' page.
class Author final : public Form
{
    Q_OBJECT
public:
    using OpenLink = std::function<void(const QString& address)>;

    Author(const Handlers& handlers, OpenLink openLink);
};
