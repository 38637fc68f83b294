/* The whole binary interface: what hosts call, what component libraries offer, and what the
 * libraries that stand beside this one have to offer.
 */
#ifndef TARVO_TARVO_H
#define TARVO_TARVO_H

#include "base.h"
#include "catalogue.h"
#include "collection.h"
#include "data.h"
#include "environment.h"
#include "error.h"
#include "identification.h"
#include "identifiers.h"
#include "idl_parser.h"
#include "instantiation.h"
#include "library.h"
#include "marshal.h"
#include "persistence.h"
#include "registrar.h"
#include "registry.h"
#include "registry_writer.h"
#include "resource.h"
#include "result.h"
#include "uuid.h"

#endif
