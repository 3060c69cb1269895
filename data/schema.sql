-- DossierKit: tables, indexes and triggers of the database (SQLite 3.40 or later).
--
-- Column kinds: varchar(n) text, ntext long text, integer, datetime (ISO text
-- yyyy-mm-dd, a month is stored as its first day), boolean (0 or 1).
-- Texts are compared without regard to case, hence collate nocase everywhere.

-- ---------------------------------------------------------------- metadata

-- one row per information set
create table s_infotable (
  tblname     varchar(10) collate nocase,   -- name of the set and of its table
  tbldesc     varchar(60) collate nocase,   -- caption in the menu
  OtherProp   integer,                      -- order in the menu
  orderfield  varchar(60) collate nocase,   -- order of the records, null: by number
  maxnumber   integer,                      -- most records per person, null: no limit
  Property    boolean not null              -- 1: one record per person, 0: many
);
create index ix_s_infotable_tblname on s_infotable (tblname);

-- one row per field of a set
create table s_infoitem (
  tblname     varchar(10) collate nocase,
  itemname    varchar(10) collate nocase,   -- name of the column
  itemdesc    varchar(60) collate nocase,   -- label, unique within the set, a bare alias
  FieldType   varchar(20) collate nocase,   -- Varchar, Ntext, int, datetime, bit
  FieldLength varchar(10) collate nocase,   -- most characters of a text
  CodeTable   varchar(30) collate nocase,   -- code group, null: no codes
  style       varchar(20) collate nocase,   -- format in the list of records
  "Check"     varchar(60) collate nocase,   -- check rule
  FldOrder    varchar(10) collate nocase,   -- position in the list of records
  FldWidth    integer,                      -- width in the list in twips, 0: hidden
  FldExplain  varchar(255) collate nocase,  -- explanation shown for the field
  "IsNUll"    boolean                       -- 1: may stay empty, 0: required
);
create index ix_s_infoitem_tblname on s_infoitem (tblname);

-- one row per code table
create table s_CodeTableDefine (
  dmgrp       varchar(30) collate nocase,
  codtbldsc   varchar(60) collate nocase
);
create index ix_s_CodeTableDefine_dmgrp on s_CodeTableDefine (dmgrp);

-- one row per level of a code table; bit: total length of a code of the level
create table s_CodeLevDefine (
  dmgrp       varchar(30) collate nocase,
  levelnum    integer,
  "bit"       integer
);
create index ix_s_CodeLevDefine_dmgrp on s_CodeLevDefine (dmgrp);

-- generator of person identifiers: a version 4 GUID in braces for each new row
create table S_GUID (
  id          varchar(38) collate nocase default (
                '{' || hex(randomblob(4)) || '-' || hex(randomblob(2))
                || '-4' || substr(hex(randomblob(2)), 2)
                || '-' || substr('89AB', 1 + (random() & 3), 1) || substr(hex(randomblob(2)), 2)
                || '-' || hex(randomblob(6)) || '}'),
  val         varchar(10) collate nocase
);

-- ------------------------------------------------------------- code tables
-- dmcod code, dmcpt caption, dmhnd pinyin initials, dmattr 1: may be chosen
-- The index ..._level serves the tree of the codes, which is read level by level.

-- 性别
create table GB2261 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB2261_dmcod on GB2261 (dmcod);
create index ix_GB2261_dmcpt on GB2261 (dmcpt);
create index ix_GB2261_dmhnd on GB2261 (dmhnd);
create index ix_GB2261_level on GB2261 (length(dmcod), dmcod, dmcpt, dmattr);

-- 民族
create table GB3304 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB3304_dmcod on GB3304 (dmcod);
create index ix_GB3304_dmcpt on GB3304 (dmcpt);
create index ix_GB3304_dmhnd on GB3304 (dmhnd);
create index ix_GB3304_level on GB3304 (length(dmcod), dmcod, dmcpt, dmattr);

-- 政治面貌
create table GB4762 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB4762_dmcod on GB4762 (dmcod);
create index ix_GB4762_dmcpt on GB4762 (dmcpt);
create index ix_GB4762_dmhnd on GB4762 (dmhnd);
create index ix_GB4762_level on GB4762 (length(dmcod), dmcod, dmcpt, dmattr);

-- 文化程度
create table GB4658 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB4658_dmcod on GB4658 (dmcod);
create index ix_GB4658_dmcpt on GB4658 (dmcpt);
create index ix_GB4658_dmhnd on GB4658 (dmhnd);
create index ix_GB4658_level on GB4658 (length(dmcod), dmcod, dmcpt, dmattr);

-- 学位
create table GB6864 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB6864_dmcod on GB6864 (dmcod);
create index ix_GB6864_dmcpt on GB6864 (dmcpt);
create index ix_GB6864_dmhnd on GB6864 (dmhnd);
create index ix_GB6864_level on GB6864 (length(dmcod), dmcod, dmcpt, dmattr);

-- 行政区划
create table GB2260 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB2260_dmcod on GB2260 (dmcod);
create index ix_GB2260_dmcpt on GB2260 (dmcpt);
create index ix_GB2260_dmhnd on GB2260 (dmhnd);
create index ix_GB2260_level on GB2260 (length(dmcod), dmcod, dmcpt, dmattr);

-- 专业技术职务
create table GB8561 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB8561_dmcod on GB8561 (dmcod);
create index ix_GB8561_dmcpt on GB8561 (dmcpt);
create index ix_GB8561_dmhnd on GB8561 (dmhnd);
create index ix_GB8561_level on GB8561 (length(dmcod), dmcod, dmcpt, dmattr);

-- 学科分类
create table GB13745 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB13745_dmcod on GB13745 (dmcod);
create index ix_GB13745_dmcpt on GB13745 (dmcpt);
create index ix_GB13745_dmhnd on GB13745 (dmhnd);
create index ix_GB13745_level on GB13745 (length(dmcod), dmcod, dmcpt, dmattr);

-- 国家和地区
create table GB2659 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB2659_dmcod on GB2659 (dmcod);
create index ix_GB2659_dmcpt on GB2659 (dmcpt);
create index ix_GB2659_dmhnd on GB2659 (dmhnd);
create index ix_GB2659_level on GB2659 (length(dmcod), dmcod, dmcpt, dmattr);

-- 单位隶属关系
create table GB12404 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB12404_dmcod on GB12404 (dmcod);
create index ix_GB12404_dmcpt on GB12404 (dmcpt);
create index ix_GB12404_dmhnd on GB12404 (dmhnd);
create index ix_GB12404_level on GB12404 (length(dmcod), dmcod, dmcpt, dmattr);

-- 职务级别
create table GB12407 (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_GB12407_dmcod on GB12407 (dmcod);
create index ix_GB12407_dmcpt on GB12407 (dmcpt);
create index ix_GB12407_dmhnd on GB12407 (dmhnd);
create index ix_GB12407_level on GB12407 (length(dmcod), dmcod, dmcpt, dmattr);

-- 行政职务
create table LCZW (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_LCZW_dmcod on LCZW (dmcod);
create index ix_LCZW_dmcpt on LCZW (dmcpt);
create index ix_LCZW_dmhnd on LCZW (dmhnd);
create index ix_LCZW_level on LCZW (length(dmcod), dmcod, dmcpt, dmattr);

-- 单位性质
create table LCDWXZ (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_LCDWXZ_dmcod on LCDWXZ (dmcod);
create index ix_LCDWXZ_dmcpt on LCDWXZ (dmcpt);
create index ix_LCDWXZ_dmhnd on LCDWXZ (dmhnd);
create index ix_LCDWXZ_level on LCDWXZ (length(dmcod), dmcod, dmcpt, dmattr);

-- 单位类别
create table LCDWLB (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_LCDWLB_dmcod on LCDWLB (dmcod);
create index ix_LCDWLB_dmcpt on LCDWLB (dmcpt);
create index ix_LCDWLB_dmhnd on LCDWLB (dmhnd);
create index ix_LCDWLB_level on LCDWLB (length(dmcod), dmcod, dmcpt, dmattr);

-- 专利类别
create table LCZLLB (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_LCZLLB_dmcod on LCZLLB (dmcod);
create index ix_LCZLLB_dmcpt on LCZLLB (dmcpt);
create index ix_LCZLLB_dmhnd on LCZLLB (dmhnd);
create index ix_LCZLLB_level on LCZLLB (length(dmcod), dmcod, dmcpt, dmattr);

-- 奖励级别
create table LCJLJB (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_LCJLJB_dmcod on LCJLJB (dmcod);
create index ix_LCJLJB_dmcpt on LCJLJB (dmcpt);
create index ix_LCJLJB_dmhnd on LCJLJB (dmhnd);
create index ix_LCJLJB_level on LCJLJB (length(dmcod), dmcod, dmcpt, dmattr);

-- 奖励等级
create table LCJLDJ (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_LCJLDJ_dmcod on LCJLDJ (dmcod);
create index ix_LCJLDJ_dmcpt on LCJLDJ (dmcpt);
create index ix_LCJLDJ_dmhnd on LCJLDJ (dmhnd);
create index ix_LCJLDJ_level on LCJLDJ (length(dmcod), dmcod, dmcpt, dmattr);

-- 参加角色
create table LCCYJS (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_LCCYJS_dmcod on LCCYJS (dmcod);
create index ix_LCCYJS_dmcpt on LCCYJS (dmcpt);
create index ix_LCCYJS_dmhnd on LCCYJS (dmhnd);
create index ix_LCCYJS_level on LCCYJS (length(dmcod), dmcod, dmcpt, dmattr);

-- 作者角色
create table LCZZJS (
  dmcod  varchar(10) collate nocase,
  dmcpt  varchar(60) collate nocase,
  dmhnd  varchar(30) collate nocase,
  dmattr boolean
);
create index ix_LCZZJS_dmcod on LCZZJS (dmcod);
create index ix_LCZZJS_dmcpt on LCZZJS (dmcpt);
create index ix_LCZZJS_dmhnd on LCZZJS (dmhnd);
create index ix_LCZZJS_level on LCZZJS (length(dmcod), dmcod, dmcpt, dmattr);

-- -------------------------------------------------------- information sets
-- A00 is the person. It is not unique in any table, not even in A01: the
-- program itself counts the persons with an A00.

-- 基本信息
create table A01 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A0101  varchar(30) collate nocase,      -- 姓名
  A0102  varchar(1) collate nocase,       -- 性别
  A0103  varchar(2) collate nocase,       -- 民族
  A0104  datetime,                        -- 出生日期
  A0105  varchar(2) collate nocase,       -- 党派
  A0106  varchar(2) collate nocase,       -- 文化程度
  A0107  varchar(3) collate nocase,       -- 学位
  A0108  datetime,                        -- 毕业时间
  A0109  varchar(60) collate nocase,      -- 所学专业
  A0110  varchar(60) collate nocase,      -- 从事专业
  A0112  varchar(3) collate nocase,       -- 专业技术职务
  A0113  varchar(3) collate nocase,       -- 行政职务
  A0114  varchar(6) collate nocase,       -- 户籍所在地
  A0115  varchar(120) collate nocase,     -- 工作单位
  A0116  datetime,                        -- 参加工作时间
  A0117  varchar(6) collate nocase,       -- 邮政编码
  A0118  varchar(30) collate nocase,      -- 办公电话
  A0119  varchar(11) collate nocase,      -- 手机号码
  A0120  varchar(60) collate nocase,      -- 电子邮箱
  A0121  varchar(150) collate nocase,     -- 通讯地址
  A0122  varchar(3) collate nocase,       -- 专业分类
  A0123  varchar(2) collate nocase,       -- 单位类别
  A0124  varchar(2) collate nocase,       -- 单位性质
  A0125  varchar(2) collate nocase,       -- 单位隶属
  A0127  varchar(4) collate nocase,       -- 卓荐年份
  A0128  varchar(4) collate nocase,       -- 特贴年份
  A0129  varchar(4) collate nocase,       -- 优青年份
  A0131  varchar(18) collate nocase,      -- 身份证号
  A0140  varchar(100) collate nocase,     -- 毕业院校
  A0136  integer,                         -- 人员类别
  A0199  integer                          -- 人员序号
);
create index ix_A01_A00 on A01 (A00);
create index ix_A01_A0199 on A01 (A0199);

-- 学习经历
create table A02 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A0201  datetime,                        -- 起始年月
  A0201A datetime,                        -- 截止年月
  A0202  varchar(100) collate nocase,     -- 就读院校
  A0203  varchar(60) collate nocase,      -- 专业
  A0204  varchar(3) collate nocase,       -- 学位
  A0299  integer                          -- 序号
);
create index ix_A02_A00_A0299 on A02 (A00, A0299);

-- 工作经历
create table A03 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A0301  datetime,                        -- 起始年月
  A0301A datetime,                        -- 截止年月
  A0302  varchar(120) collate nocase,     -- 工作单位
  A0303  varchar(3) collate nocase,       -- 行政职务
  A0304  varchar(3) collate nocase,       -- 职称
  A0399  integer                          -- 序号
);
create index ix_A03_A00_A0399 on A03 (A00, A0399);

-- 主要兼职
create table A04 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A0401  datetime,                        -- 起始年月
  A0402  datetime,                        -- 截止时间
  A0403  varchar(120) collate nocase,     -- 任职单位名称
  A0404  varchar(60) collate nocase,      -- 职务名称
  A0499  integer                          -- 序号
);
create index ix_A04_A00_A0499 on A04 (A00, A0499);

-- 访问进修
create table A05 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A0501  datetime,                        -- 起始年月
  A0502  datetime,                        -- 截止年月
  A0503  varchar(120) collate nocase,     -- 访问机构名称
  A0504  varchar(60) collate nocase,      -- 地点
  A0505  ntext collate nocase,            -- 有关内容
  A0506  varchar(40) collate nocase,      -- 身份
  A0599  integer                          -- 序号
);
create index ix_A05_A00_A0599 on A05 (A00, A0599);

-- 学术会议
create table A06 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A0601  datetime,                        -- 时间
  A0602  varchar(120) collate nocase,     -- 主办单位
  A0603  varchar(150) collate nocase,     -- 会议名称
  A0604  varchar(60) collate nocase,      -- 会议地点
  A0605  varchar(200) collate nocase,     -- 论文题目
  A0699  integer                          -- 序号
);
create index ix_A06_A00_A0699 on A06 (A00, A0699);

-- 专业成果
create table A08 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A0801  varchar(200) collate nocase,     -- 成果项目名称
  A0802  datetime,                        -- 完成时间
  A0803  ntext collate nocase,            -- 创新性成果
  A0804  ntext collate nocase,            -- 经济或社会效益
  A0805  varchar(1) collate nocase,       -- 角色
  A0806  varchar(200) collate nocase,     -- 合作者
  A0899  integer                          -- 序号
);
create index ix_A08_A00_A0899 on A08 (A00, A0899);

-- 获奖信息
create table A09 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A0901  varchar(200) collate nocase,     -- 成果名称
  A0902  varchar(120) collate nocase,     -- 奖励名称
  A0904  varchar(120) collate nocase,     -- 批准机关
  A0905  integer,                         -- 排名
  A0906  varchar(1) collate nocase,       -- 等级
  A0907  varchar(4) collate nocase,       -- 年份
  A0908  varchar(60) collate nocase,      -- 证书编号
  A0909  varchar(200) collate nocase,     -- 主要合作者
  A0910  varchar(1) collate nocase,       -- 奖励级别
  A0999  integer                          -- 序号
);
create index ix_A09_A00_A0999 on A09 (A00, A0999);

-- 论文著作
create table A10 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A1001  varchar(200) collate nocase,     -- 名称
  A1002  varchar(4) collate nocase,       -- 发表年份
  A1003  varchar(2) collate nocase,       -- 角色
  A1004  integer,                         -- 排名
  A1005  varchar(200) collate nocase,     -- 主要合作者
  A1006  varchar(120) collate nocase,     -- 出版机构
  A1007  ntext collate nocase,            -- 情况说明
  A1099  integer                          -- 序号
);
create index ix_A10_A00_A1099 on A10 (A00, A1099);

-- 成果介绍
create table A11 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A1101  varchar(200) collate nocase,     -- 成果名称
  A1102  varchar(4) collate nocase,       -- 完成年份
  A1103  varchar(200) collate nocase,     -- 主要完成人
  A1104  ntext collate nocase,            -- 对成果的简要评价
  A1199  integer                          -- 序号
);
create index ix_A11_A00_A1199 on A11 (A00, A1199);

-- 主要成就
create table A12 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A1201  ntext collate nocase             -- 主要成就贡献及学风道德情况
);
create index ix_A12_A00 on A12 (A00);

-- 培养人才
create table A13 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A1301  integer,                         -- 博士数量
  A1302  integer,                         -- 硕士数量
  A1303  integer,                         -- 专业技术骨干数量
  A1304  integer,                         -- 其他人员数量
  A1305  ntext collate nocase             -- 培养人才情况概述及设想
);
create index ix_A13_A00 on A13 (A00);

-- 领域认识
create table A14 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A1401  ntext collate nocase             -- 对所从事领域现状和发展趋势的认识
);
create index ix_A14_A00 on A14 (A00);

-- 近期工作
create table A15 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A1501  varchar(200) collate nocase,     -- 项目名称
  A1502  varchar(120) collate nocase,     -- 任务来源
  A1503  varchar(250) collate nocase,     -- 技术路线
  A1504  ntext collate nocase,            -- 意义
  A1505  varchar(200) collate nocase,     -- 合作者
  A1599  integer                          -- 序号
);
create index ix_A15_A00_A1599 on A15 (A00, A1599);

-- 授权专利
create table A21 (
  A00    varchar(36) collate nocase,      -- 人员标识
  A2101  varchar(200) collate nocase,     -- 专利名称
  A2104  varchar(1) collate nocase,       -- 专利类别
  A2107  varchar(30) collate nocase,      -- 专利保护期
  A2111  varchar(3) collate nocase,       -- 授权国家
  A2112  varchar(120) collate nocase,     -- 专利所有者
  A2113  integer,                         -- 排名
  A2199  integer                          -- 序号
);
create index ix_A21_A00_A2199 on A21 (A00, A2199);

-- 单位推荐情况
create table B01 (
  A00    varchar(36) collate nocase,      -- 人员标识
  B0101  varchar(120) collate nocase,     -- 归口推荐部门
  B0102  ntext collate nocase             -- 提名单位概要评价
);
create index ix_B01_A00 on B01 (A00);

-- When the last A01 row of a person goes, the rest of the dossier goes with it.
create trigger tr_A01_delete after delete on A01
when not exists (select 1 from A01 where A00 = old.A00)
begin
  delete from A02 where A00 = old.A00;
  delete from A03 where A00 = old.A00;
  delete from A04 where A00 = old.A00;
  delete from A05 where A00 = old.A00;
  delete from A06 where A00 = old.A00;
  delete from A08 where A00 = old.A00;
  delete from A09 where A00 = old.A00;
  delete from A10 where A00 = old.A00;
  delete from A11 where A00 = old.A00;
  delete from A12 where A00 = old.A00;
  delete from A13 where A00 = old.A00;
  delete from A14 where A00 = old.A00;
  delete from A15 where A00 = old.A00;
  delete from A21 where A00 = old.A00;
  delete from B01 where A00 = old.A00;
end;
