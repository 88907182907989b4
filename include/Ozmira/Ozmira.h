// Everything that an application needs.
#pragma once

#import <Ozmira/OZMContainer.h>
#import <Ozmira/OZMDocument.h>
#import <Ozmira/OZMImageCache.h>
#import <Ozmira/OzmiraColor.h>
#import <Ozmira/OzmiraExport.h>
#import <Ozmira/OzmiraVersion.h>
#import <Ozmira/UIColor+OZMColor.h>
