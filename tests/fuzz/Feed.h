#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>

// Takes one input: its first byte says what the others are. Ends the program (abort) where
// something is not as it must be for any input whatever.
void feed(QByteArrayView input);

// An input made of what servers, chatters and files say, bent here and there. The same number
// gives the same input.
QByteArray inputOf(std::uint64_t number);
