#include "host/desktop/shell/checking.h"

#include <QCoreApplication>
#include <exception>

#include "host/desks/store_check.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/shell/faults_dialog.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

struct Checking {
  Q_DECLARE_TR_FUNCTIONS(Checking)
};

}  // namespace

void CheckStore(Workplace& place) {
  OperationRunner& runner = place.runner();
  place.Tell({});
  Table faults;
  try {
    const bool ran = runner.Run(Checking::tr("Checking the store"), [&] {
      faults = WholeCheck(place.session(), place.session().Units(), runner.progress());
    });
    if (!ran) {
      return;
    }
  } catch (const std::exception& failure) {
    if (runner.cancelled()) {
      place.Tell(Checking::tr("Cancelled. The store was not looked over to its end."));
    } else {
      TellFailure(place.window(), Checking::tr("The store cannot be checked."),
                  Told(failure.what()));
    }
    return;
  }
  if (faults.rows.empty()) {
    place.Tell(Checking::tr("Nothing is wrong: the store, its rows and the history are in order."));
    return;
  }
  FaultsDialog(place.window(), faults).exec();
}

}  // namespace qorhost
