#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>

#include "soporte/textos.h"
