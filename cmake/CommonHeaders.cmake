# Headers that most sources of a kind read are compiled once for all of them. A source still includes
# what it uses: lint reads each on its own, and so does a build with CMAKE_DISABLE_PRECOMPILE_HEADERS.

set(QORCRED_COMMON_HEADERS
  <algorithm> <array> <cmath> <cstddef> <cstdint> <functional> <limits> <memory> <optional> <span>
  <string> <string_view> <utility> <vector>
  <frame/object.h> <frame/value.h>)

# Those of the windows: Qt's whole list of them makes a precompiled header of three times the size.
set(QORCRED_WINDOW_HEADERS
  <QAction> <QApplication> <QCheckBox> <QComboBox> <QDateEdit> <QFileDialog> <QHBoxLayout> <QHeaderView>
  <QLabel> <QLineEdit> <QListView> <QMessageBox> <QPushButton> <QRadioButton> <QSettings> <QSpinBox>
  <QTableView> <QTimer> <QVBoxLayout>)

# qorcred_common_headers(name HEADERS ... LINK ... OPTIONS ...)
#
# Declares a target that compiles the headers above and further ones; others take them with
# target_precompile_headers(other REUSE_FROM name). LINK is where the headers are found. OPTIONS are
# those that the others are compiled with: a compiler refuses headers compiled in another way.
function(qorcred_common_headers name)
  cmake_parse_arguments(COMMON "" "" "HEADERS;LINK;OPTIONS" ${ARGN})
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Nothing but the headers.\n")
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${source})
  target_link_libraries(${name} PRIVATE qorcred_warnings ${COMMON_LINK})
  target_compile_options(${name} PRIVATE ${COMMON_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${QORCRED_COMMON_HEADERS} ${COMMON_HEADERS})
endfunction()
