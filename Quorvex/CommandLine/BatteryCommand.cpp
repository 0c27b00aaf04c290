#include "BatteryCommand.h"

#include "BatteryService.h"
#include "JSONFormatter.h"
#include "TableFormatter.h"

namespace quorvex {

void BatteryCommand::run() const {
  const auto info = BatteryService{machine_->batteryDictionaries()}.read();
  if (!info) {
    output_->printError("No battery found.");
    return;
  }
  std::string text = options_.json ? JSONFormatter::batteryDict(*info)
                                   : TableFormatter::formatBatteryDetail(*info);
  text.push_back('\n');
  output_->print(text);
}

}  // namespace quorvex
