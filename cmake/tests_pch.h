#include <gtest/gtest.h>

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include "soporte/textos.h"
