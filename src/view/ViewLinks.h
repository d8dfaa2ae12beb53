#pragma once

#include "view/AttributeTables.h"
#include "view/ChatText.h"

#include <QList>

#include <functional>
#include <optional>

// Part of a text.
struct LinkSpan
{
    qsizetype start = 0;
    qsizetype end = 0;
};

// Links in the text of a chat view. What a link is and where it leads, others know.
class ViewLinks final
{
public:
    struct Ports
    {
        std::function<QList<LinkSpan>(const QString& line)> find;
        std::function<void(const QString& link)> open; // none: links are only copied here
    };
    struct Link
    {
        qsizetype start = 0; // positions of the view
        qsizetype end = 0;
        QString text;
    };

    ViewLinks(const ChatText& text, const AttributeTables& tables)
        : m_text(text)
        , m_tables(tables)
    {
    }

    void setPorts(Ports ports) { m_ports = std::move(ports); }
    bool canOpen() const { return static_cast<bool>(m_ports.open); }
    void open(const Link& link) const { m_ports.open(link.text); }

    // The link that has the character at a position.
    std::optional<Link> at(qsizetype position) const;
    QList<Link> inLines(qsizetype first, qsizetype last) const;

private:
    const ChatText& m_text;
    const AttributeTables& m_tables;
    Ports m_ports;
};
