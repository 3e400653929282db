#pragma once

#include <QtCore/qglobal.h>

/// Marks what the host library offers to modules and to the host application.
#if defined(HOST_LIBRARY)
#define HOST_EXPORT Q_DECL_EXPORT
#else
#define HOST_EXPORT Q_DECL_IMPORT
#endif
