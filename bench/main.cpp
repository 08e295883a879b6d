// Runs the measures and tells them as ratios: what the program takes, over what the same work takes
// done directly in the library. A measure is named "work/side/lines", side "librano" or "directo".
// Beside the time that went by stands the ratio of the processor's time alone, which a machine that
// is busy with something else blurs less.
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
      (lado == "librano" ? fila.librano : fila.directo) = {run.GetAdjustedRealTime() / escala(run),
                                                           run.GetAdjustedCPUTime() / escala(run)};
      // At once, too: a measure that breaks down must not take the others with it.
      fprintf(stderr, "  %s %s\n", nombre.c_str(),
              tiempo(run.GetAdjustedRealTime() / escala(run)).c_str());
    }
  }

  void Finalize() override {
    printf("%-28s %10s %12s %12s %8s %12s %12s %8s\n", "trabajo", "lineas", "librano", "directo",
           "razon", "cpu", "cpu directo", "razon");
    for (const auto& [clave, fila] : filas_) {
      const auto& [n, trabajo, lineas] = clave;
      printf("%-28s %10ld", trabajo.c_str(), lineas);
      compara(fila.librano.pasa, fila.directo.pasa);
      compara(fila.librano.ocupa, fila.directo.ocupa);
      printf("\n");
    }
  }

 private:
  struct Tiempo {  // seconds
    double pasa = 0;
    double ocupa = 0;
  };
  struct Fila {
    Tiempo librano;
    Tiempo directo;
  };

  static void compara(double librano, double directo) {
    printf(" %12s %12s", tiempo(librano).c_str(), tiempo(directo).c_str());
    if (librano > 0 && directo > 0)
      printf(" %8.2f", librano / directo);
    else
      printf(" %8s", "-");
  }

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
