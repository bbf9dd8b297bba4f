#ifndef TAVRINQT_TAVRINQTEXPORT_H
#define TAVRINQT_TAVRINQTEXPORT_H

// The export mark of libtavrin-qt's public classes and functions.
#if defined(_WIN32)
#  if defined(TAVRIN_QT_BUILDING_LIBRARY)
#    define TAVRIN_QT_API __declspec(dllexport)
#  else
#    define TAVRIN_QT_API __declspec(dllimport)
#  endif
#else
#  define TAVRIN_QT_API __attribute__((visibility("default")))
#endif

#endif  // TAVRINQT_TAVRINQTEXPORT_H
