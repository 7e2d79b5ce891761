#include "MessageSource.h"

MessageSource::MessageSource(QObject* parent) : QObject(parent) {}

MessageSource::~MessageSource() = default;
