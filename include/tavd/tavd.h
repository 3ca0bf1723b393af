/* The whole library: 158 functions in families, each in a header of its own.
 *
 * A host asks tavd_version_nmb first, then sets the process up with the
 * tavdcore_ functions, opens a database (tavdf_), finds a product through the
 * service (tavd/tavb.h), loads it and calculates (tavca_).
 */
#ifndef TAVD_TAVD_H
#define TAVD_TAVD_H

#include "tavd/L2dg.h"
#include "tavd/attributes.h"
#include "tavd/codes.h"
#include "tavd/ewads.h"
#include "tavd/flowdata.h"
#include "tavd/tavca.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdg.h"
#include "tavd/tavdidset.h"
#include "tavd/tavdshapepic.h"
#include "tavd/tavfm.h"
#include "tavd/types.h"

/* The version of this interface, and what tavd_version_nmb answers to any other. */
#define TAVD_INTERFACE_VERSION 190
#define TAVD_INTERFACE_REFUSED (-TAVD_INTERFACE_VERSION)

TAVD_EXTERN_C_BEGIN

/* The handshake: `version` is the interface that the host was built for.
 * Returns TAVD_INTERFACE_VERSION for that number and TAVD_INTERFACE_REFUSED for
 * any other. No other function depends on the call. */
TAVD_API int tavd_version_nmb(int version);

TAVD_EXTERN_C_END

#endif
