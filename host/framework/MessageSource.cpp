#include "MessageSource.h"

MessageSource::MessageSource(QObject* parent) : QObject(parent) {}

MessageSource::~MessageSource() = default;

// Compiled here instead of on its own.
#include "moc_MessageSource.cpp"
