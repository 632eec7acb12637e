#include "platform/window/Graveyard.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QPointer>
#include <QThread>
#include <QWidget>
#include <utility>
#include <vector>

#include "platform/core/CObject.h"

namespace {

int g_handling = 0;

// A widget may go with its parent meanwhile. Objects belong to the graveyard alone.
struct Grave {
    QPointer<QWidget> widget;
    std::unique_ptr<CObject> object;
};

std::vector<Grave>& Graves() {
    static std::vector<Grave> graves;
    return graves;
}

// The toolkit runs an event's handlers to their end before the outermost loop takes the next one; in a nested
// loop some widget may wait for its own event to return.
bool IsAnythingHandled(int mostLoops) {
    return g_handling > 0 || QThread::currentThread()->loopLevel() > mostLoops;
}

void DeleteAll() {
    // What is deleted may bury more.
    while (!Graves().empty()) {
        for (Grave& grave : std::exchange(Graves(), {})) {
            delete grave.widget;
            grave.object.reset();
        }
    }
}

void EmptyFromLoop() {
    if (!IsAnythingHandled(1)) DeleteAll();
}

// Empties the graveyard when the loop of events comes round again, and whenever it has nothing to do: nested
// loops of the toolkit's own end without a word.
void EmptySoon() {
    static QPointer<QAbstractEventDispatcher> watched;
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    if (dispatcher && dispatcher != watched) {
        watched = dispatcher;
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, qApp, EmptyFromLoop);
        qAddPostRoutine(DeleteAll);
    }
    QMetaObject::invokeMethod(qApp, EmptyFromLoop, Qt::QueuedConnection);
}

void AddGrave(Grave grave) {
    Graves().push_back(std::move(grave));
    EmptyGraveyard();
    if (!Graves().empty() && qApp) EmptySoon();
}

}  // namespace

HandlingScope::HandlingScope() { ++g_handling; }

HandlingScope::~HandlingScope() {
    if (--g_handling > 0 || Graves().empty()) return;
    // Not at once: whoever called may still hold what was buried. Without the toolkit nobody comes later.
    qApp ? EmptySoon() : DeleteAll();
}

void Bury(QWidget* widget) {
    widget->hide();
    AddGrave({widget, nullptr});
}

void Bury(CObject* object) { AddGrave({nullptr, std::unique_ptr<CObject>(object)}); }

void EmptyGraveyard() {
    if (!IsAnythingHandled(0)) DeleteAll();
}
