#pragma once

#include <QApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

// Acts on a modal form as soon as it is on the screen (inside its own event loop). A form
// that the action leaves open is a failure, and is closed so that the test goes on. The
// flag returned tells whether the form opened; the wait ends with the context object, so
// that a form that never opened can't act in a later test.
template <typename Form> std::shared_ptr<bool> whenFormOpens(QObject *context, std::function<void(Form *)> act)
{
    auto opened = std::make_shared<bool>(false);
    QTimer::singleShot(0, context, [act, opened] {
        Form *form = nullptr;
        for (QWidget *w : QApplication::topLevelWidgets()) {
            if (auto *candidate = qobject_cast<Form *>(w); candidate && candidate->isVisible())
                form = candidate;
        }
        if (!form)
            return;
        *opened = true;
        act(form);
        if (form->isVisible()) {
            ADD_FAILURE() << "the form is still open";
            form->reject();
        }
    });
    return opened;
}
