// Runs the measures and tells them as ratios: what the program takes, over what the same work takes
// done directly in the library. A measure is named "work/side/lines", side "librano" or "directo".
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <QApplication>
#include <string>

namespace {

class Razones : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) {
        fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
        continue;
      }
      const std::string nombre = run.run_name.function_name + "/" + run.run_name.args;
      const auto barra = run.run_name.function_name.find('/');
      const std::string trabajo = run.run_name.function_name.substr(0, barra);
      const std::string lado = run.run_name.function_name.substr(barra + 1);
      Fila& fila = filas_[{orden(trabajo), trabajo, std::atol(run.run_name.args.c_str())}];
      (lado == "librano" ? fila.librano : fila.directo) = run.GetAdjustedRealTime() / escala(run);
      fprintf(stderr, "  %s\n", nombre.c_str());
    }
  }

  void Finalize() override {
    printf("%-28s %10s %14s %14s %8s\n", "trabajo", "lineas", "librano", "directo", "razon");
    for (const auto& [clave, fila] : filas_) {
      const auto& [n, trabajo, lineas] = clave;
      printf("%-28s %10ld %14s %14s", trabajo.c_str(), lineas, tiempo(fila.librano).c_str(),
             tiempo(fila.directo).c_str());
      if (fila.librano > 0 && fila.directo > 0)
        printf(" %8.2f\n", fila.librano / fila.directo);
      else
        printf(" %8s\n", "-");
    }
  }

 private:
  struct Fila {
    double librano = 0;  // seconds
    double directo = 0;
  };

  static double escala(const Run& run) { return benchmark::GetTimeUnitMultiplier(run.time_unit); }

  static std::string tiempo(double s) {
    if (s <= 0) return "-";
    char texto[32];
    if (s < 1e-3)
      snprintf(texto, sizeof texto, "%.1f us", s * 1e6);
    else if (s < 1)
      snprintf(texto, sizeof texto, "%.2f ms", s * 1e3);
    else
      snprintf(texto, sizeof texto, "%.2f s", s);
    return texto;
  }

  int orden(const std::string& trabajo) {
    return orden_.try_emplace(trabajo, static_cast<int>(orden_.size())).first->second;
  }

  std::map<std::string, int> orden_;
  std::map<std::tuple<int, std::string, long>, Fila> filas_;
};

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  Razones razones;
  benchmark::RunSpecifiedBenchmarks(&razones);
  return 0;
}
