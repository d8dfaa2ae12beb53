#pragma once

#include <QWidget>

class Handlers;
class WebBrowser;

// The row of buttons above a web page. A button's key is its caption and its object name.
class WebToolBar final : public QWidget
{
    Q_OBJECT
public:
    WebToolBar(const Handlers& handlers, WebBrowser& browser);
};
