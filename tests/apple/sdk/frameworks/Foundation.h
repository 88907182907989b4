#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <dispatch/dispatch.h>

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_ENUM(type, name) CF_ENUM(type, name)
#define NS_OPTIONS(type, name) CF_OPTIONS(type, name)
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_REQUIRES_SUPER __attribute__((objc_requires_super))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_SWIFT_NAME(name) __attribute__((swift_name(#name)))
#define NS_SWIFT_SENDABLE __attribute__((swift_attr("@Sendable")))
#define NS_SWIFT_UNAVAILABLE(reason) __attribute__((availability(swift, unavailable, message = reason)))
#define NS_FORMAT_FUNCTION(f, a) __attribute__((format(__NSString__, f, a)))
#define FOUNDATION_EXPORT CF_EXPORT

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef bool BOOL;
#define YES __objc_yes
#define NO __objc_no
#ifdef __cplusplus
#define nil nullptr
#else
#define nil ((void*)0)
#endif

NS_ASSUME_NONNULL_BEGIN

@class NSString, NSMethodSignature, NSInvocation, NSZone, NSCoder;

@protocol NSObject
- (BOOL)isEqual:(id _Nullable)object;
@property (readonly) NSUInteger hash;
- (Class)class;
- (instancetype)self;
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
@end

@protocol NSCopying
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (void)load;
+ (instancetype)alloc;
+ (instancetype)new;
+ (Class)class;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (id)copy;
- (void)dealloc NS_REQUIRES_SUPER;
@end

@interface NSObject (NSKeyValueObserving)
+ (BOOL)automaticallyNotifiesObserversForKey:(NSString*)key;
- (void)willChangeValueForKey:(NSString*)key;
- (void)didChangeValueForKey:(NSString*)key;
@end

@interface NSNull : NSObject
+ (NSNull*)null;
@end

@interface NSString : NSObject <NSCopying>
@property (readonly) NSUInteger length;
@property (nullable, readonly) const char* UTF8String NS_RETURNS_INNER_POINTER;
@property (readonly, copy) NSString* pathExtension;
@property (readonly, copy) NSString* lastPathComponent;
@property (readonly, copy) NSString* stringByDeletingPathExtension;
+ (instancetype)stringWithFormat:(NSString*)format, ... NS_FORMAT_FUNCTION(1, 2);
+ (nullable instancetype)stringWithUTF8String:(const char*)text;
- (BOOL)hasPrefix:(NSString*)prefix;
- (BOOL)isEqualToString:(NSString*)other;
- (NSString*)stringByAppendingString:(NSString*)other;
@end
@interface NSConstantString : NSString
@end

typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)count;
@end

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
@property (readonly) NSUInteger count;
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)index;
@end
@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
+ (instancetype)arrayWithCapacity:(NSUInteger)capacity;
- (void)addObject:(ObjectType)object;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
@property (readonly) NSUInteger count;
@property (readonly, copy) NSArray<ObjectType>* allValues;
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
- (nullable ObjectType)objectForKey:(KeyType)key;
@end
@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)setObject:(ObjectType)object forKey:(KeyType<NSCopying>)key;
- (void)removeAllObjects;
@end

@interface NSCache<KeyType, ObjectType> : NSObject
- (nullable ObjectType)objectForKey:(KeyType)key;
- (void)setObject:(ObjectType)object forKey:(KeyType)key;
- (void)removeAllObjects;
@end

@interface NSAttributedString : NSObject <NSCopying>
@end
typedef NSString* NSAttributedStringKey;
@interface NSMutableAttributedString : NSAttributedString
- (instancetype)initWithString:(NSString*)text
                    attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes;
- (void)appendAttributedString:(NSAttributedString*)other;
@end

@interface NSError : NSObject
@end

@interface NSURL : NSObject <NSCopying>
@property (nullable, readonly, copy) NSString* path;
+ (nullable instancetype)URLWithString:(NSString*)text;
- (nullable NSURL*)URLByAppendingPathComponent:(NSString*)component isDirectory:(BOOL)isDirectory;
@end

@interface NSBundle : NSObject
@property (class, readonly, strong) NSBundle* mainBundle;
@property (nullable, readonly, copy) NSURL* resourceURL;
- (nullable NSURL*)URLForResource:(nullable NSString*)name withExtension:(nullable NSString*)extension;
@end

typedef NS_OPTIONS(NSUInteger, NSDirectoryEnumerationOptions) {
    NSDirectoryEnumerationSkipsSubdirectoryDescendants = 1 << 0,
    NSDirectoryEnumerationSkipsPackageDescendants = 1 << 1,
    NSDirectoryEnumerationSkipsHiddenFiles = 1 << 2,
};
@interface NSFileManager : NSObject
@property (class, readonly, strong) NSFileManager* defaultManager;
- (nullable NSArray<NSURL*>*)contentsOfDirectoryAtURL:(NSURL*)url
                           includingPropertiesForKeys:(nullable NSArray<NSString*>*)keys
                                              options:(NSDirectoryEnumerationOptions)options
                                                error:(NSError* _Nullable* _Nullable)error;
@end

typedef NSString* NSNotificationName;
@interface NSNotification : NSObject
@end
@interface NSNotificationCenter : NSObject
@property (class, readonly, strong) NSNotificationCenter* defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(nullable NSNotificationName)name
             object:(nullable id)object;
- (void)removeObserver:(id)observer;
- (void)removeObserver:(id)observer name:(nullable NSNotificationName)name object:(nullable id)object;
@end

NS_ASSUME_NONNULL_END
