#include "RecordClasses.h"

#include "FreelanceCategory.h"
#include "FreelanceSubCategory.h"
#include "Freelancer.h"
#include "Message.h"
#include "NewsHotSpot.h"
#include "TrendingSubject.h"
#include "User.h"

void registerRecordClasses()
{
    PFObject::registerSubclass<User>();
    PFObject::registerSubclass<NewsHotSpot>();
    PFObject::registerSubclass<Freelancer>();
    PFObject::registerSubclass<FreelanceCategory>();
    PFObject::registerSubclass<FreelanceSubCategory>();
    PFObject::registerSubclass<Message>();
    PFObject::registerSubclass<TrendingSubject>();
}
