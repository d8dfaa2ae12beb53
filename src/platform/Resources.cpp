#include "platform/Resources.h"

#include <QtGlobal>
#include <qresource.h>

// The macro declares a function, which must not be in a namespace.
void loadResources()
{
    Q_INIT_RESOURCE(pictures);
    Q_INIT_RESOURCE(smileys);
    Q_INIT_RESOURCE(smileys);
}
