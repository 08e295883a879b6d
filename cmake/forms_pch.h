#include <QtWidgets/QtWidgets>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>
