// Says in words that the plug-in has found nothing, where it only beeps.
#pragma once

#include <QString>

namespace wren {

class Host;
class KeyRouter;
class QtDisplay;

// GUI thread.
class NothingFound {
public:
    NothingFound(Host& host, const KeyRouter& router, const QtDisplay& display); // borrowed

    // For the beep that has just come: which name was looked up, and in which tags. "" when no name is known.
    QString Sentence() const;

private:
    QString Name() const;

    Host& host;
    const KeyRouter& router;
    const QtDisplay& display;
};

} // namespace wren
