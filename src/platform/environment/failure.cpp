#include "platform/environment/failure.h"

#include <utility>

namespace dossierkit::environment {
namespace {

const char* DescriptionOf(int number) {
  switch (number) {
    case kInvalidCall: return "无效的过程调用或参数";
    case kOverflow: return "溢出";
    case kSubscriptOutOfRange: return "下标越界";
    case kTypeMismatch: return "类型不匹配";
    case kFileNotFound: return "文件未找到";
    case kFileExists: return "文件已存在";
    case kDiskFull: return "磁盘已满";
    case kPermissionDenied: return "拒绝的权限";
    case kPathAccess: return "路径/文件访问错误";
    case kPathNotFound: return "路径未找到";
    case kObjectNotSet: return "对象变量或 With 块变量未设置";
    case kInvalidUseOfNull: return "无效使用 Null";
    case kObjectUnloaded: return "对象已卸载";
    case kInvalidPropertyValue: return "属性值无效";
    case kAlreadyShown: return "窗体已显示，不能再以模态方式显示";
    case kDuplicateKey: return "此键已经与该集合的一个元素关联";
    case kInvalidPicture: return "无效图片";
    case kUnknownClass: return "无法创建控件，没有这个类";
    case kInvalidArgument: return "参数类型不正确，或不在可以接受的范围之内，或与其他参数冲突。";
    case kNoCurrentRow:
      return "BOF 或 EOF 中有一个是“真”，或者当前的记录已被删除，所需的操作要求一个当前的记录。";
    case kUnknownItem: return "在对应所需名称或序数的集合中，未找到项目。";
    case kObjectClosed: return "对象关闭时，不允许操作。";
    case kObjectOpen: return "对象打开时，不允许操作。";
    case kConnectionClosed: return "连接无法用于执行此操作。在此上下文中它可能已被关闭或无效。";
    case kNoTransaction: return "没有可以提交或回滚的事务。";
    case kDataMismatch: return "标准表达式中数据类型不匹配。";
    case kIndexOutOfBounds: return "索引超出边界";
    case kElementNotFound: return "未找到元素";
    case kKeyNotUnique: return "关键字不唯一";
    default: return "应用程序定义或对象定义错误";
  }
}

}  // namespace

Failure::Failure(int number, const std::string& description, std::string statement)
    : std::runtime_error(description), number_(number), statement_(std::move(statement)) {}

Failure MakeFailure(int number, std::string statement) {
  return Failure(number, DescriptionOf(number), std::move(statement));
}

}  // namespace dossierkit::environment
