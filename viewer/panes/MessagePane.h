// A view of one message beneath the list.
#pragma once

#include "viewer/panes/FieldPlace.h"

#include <QWidget>

class MessagePane : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
    using QWidget::show;

    // Shows this message, or that none is chosen where there is none. The detail stays until the
    // next call.
    virtual void show(const MessageDetail* detail) = 0;
    // Chooses a field of the message that is shown, which is not told back.
    virtual void selectField(const FieldPlace& place) = 0;
};
