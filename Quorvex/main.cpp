#include <cstdlib>

#include "ImmediateAnswers.h"
#include "Output.h"
#include "RoleModule.h"

/// Decides the role: with arguments the command line, without any the app.
int main(int argumentCount, char** arguments) {
  quorvex::prepareStandardStreams();
  if (argumentCount >= 2) {
    if (quorvex::answerImmediately(argumentCount, arguments)) {
      return EXIT_SUCCESS;
    }
    return quorvex::runRoleModule(QUORVEX_COMMAND_LINE_MODULE, argumentCount, arguments);
  }
  return quorvex::runRoleModule(QUORVEX_APP_MODULE, argumentCount, arguments);
}
